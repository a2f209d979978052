#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>

/// What rows of sources must be to one another: each fault type once, each text once, and of a
/// fault type. Returns what is wrong with a row; empty: nothing.
class SourceKeys {
public:
    /// @param line  in its file, by which the row is spoken of; 0: it is in no file of sources.
    std::string addFaultType(std::uint16_t code, std::size_t line = 0);

    /// Says that not all fault types could be read: of a text it is not known then whether it has
    /// one.
    void lackFaultTypes() { m_lacksFaultTypes = true; }

    /// To be called once all fault types are added.
    std::string addText(std::uint16_t code, std::uint16_t language, std::size_t line = 0);

private:
    using Lines = std::unordered_map<std::uint32_t, std::size_t>;

    Lines m_faultTypes;  ///< by code
    Lines m_texts;       ///< by code and language
    bool m_lacksFaultTypes = false;
};
