#include "LibraryLines.h"

#include <iostream>
#include <string_view>

#include "text/TextWidth.h"

namespace {

constexpr const char* FAILED_QUERY = "[ERROR] SQL3::getTbl() Sql Query failed: ";
constexpr const char* FAILED_OPENING = "[ERROR] ZAV::openDb() FAiled to open=";

bool beginsWith(const std::string& line, const char* beginning)
{
    return line.rfind(beginning, 0) == 0;
}

}  // namespace

std::string LibraryLines::m_lastFailure;

LibraryLines::LibraryLines() : m_results(std::cout.rdbuf())
{
    std::cout.rdbuf(&m_lines);
}

LibraryLines::~LibraryLines()
{
    std::cout.rdbuf(m_results.rdbuf());
}

LibraryLines::ToStandardError::int_type LibraryLines::ToStandardError::overflow(int_type character)
{
    if (character == '\n') {
        takeLine();
        m_line.clear();
    } else if (!traits_type::eq_int_type(character, traits_type::eof())) {
        m_line += traits_type::to_char_type(character);
    }
    return traits_type::not_eof(character);
}

/// What the library says of a failure the command says itself, with the file's name.
void LibraryLines::ToStandardError::takeLine() const
{
    if (beginsWith(m_line, FAILED_QUERY)) {
        const std::size_t start = std::string_view(FAILED_QUERY).size();
        m_lastFailure = m_line.substr(start, m_line.rfind(" Err=") - start);
    } else if (!beginsWith(m_line, FAILED_OPENING)) {
        std::cerr << printableLine(m_line) << std::endl;
    }
}

LibrarySilence::LibrarySilence() : m_stateBefore(std::cout.rdstate())
{
    std::cout.setstate(std::ios::failbit);
}

LibrarySilence::~LibrarySilence()
{
    std::cout.clear(m_stateBefore);
}
