#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "Journals.h"
#include "zav/DescriptionDb.h"

/// A database file as the library delivers it, with failures as exceptions. One at a time: it
/// stands for the library's one connection.
class Database {
public:
    /// @throws UnreadableFile
    Database(const std::string& file, int debugLevel);
    ~Database();
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;

    const std::string& file() const { return m_file; }

    /// @return how it was before it was opened here.
    const Journals& journals() const { return m_journals; }

    /// @throws UnreadableFile
    std::vector<FaultTypeDef> faultTypes();

    /// @return nothing if no fault type has the code.
    /// @throws AmbiguousCode, UnreadableFile
    std::optional<FaultTypeDef> faultType(std::uint16_t code);

    /// @throws UnreadableFile
    std::vector<Descriptions> texts();

    /// @throws UnreadableFile
    std::vector<Descriptions> textsOf(std::uint32_t code);

private:
    int faultTypesWith(std::uint16_t code);
    void throwIfFailed(int result) const;

    std::string m_file;
    Journals m_journals;
    DescriptionDb* m_service;
};
