#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>

/// What a text must not exceed to be read.
constexpr std::size_t MOST_XML_BYTES = std::size_t{128} << 20U;
constexpr std::size_t MOST_XML_DEPTH = 100;
constexpr std::size_t MOST_XML_NODES = 4'000'000;  ///< elements and attributes

/// A text that is not to be read as XML.
class UnfitXml : public std::runtime_error {
public:
    UnfitXml(std::size_t offset, const std::string& what)
        : std::runtime_error(what), m_offset(offset)
    {
    }

    std::size_t offset() const { return m_offset; }

private:
    std::size_t m_offset;
};

/// Looks through a text before a parser makes nodes of it. pugixml forgives what XML does not:
/// unknown references, characters that have no place, a second root. And it takes whatever memory
/// the nodes take.
///
/// @throws UnfitXml if it is no well-formed XML in UTF-8, has a document type, or is too much.
void checkXml(std::string_view text);
