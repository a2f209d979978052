#include "LibraryLines.h"

#include <iostream>

#include "text/TextWidth.h"

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
        std::cerr << printableLine(m_line) << std::endl;
        m_line.clear();
    } else if (!traits_type::eq_int_type(character, traits_type::eof())) {
        m_line += traits_type::to_char_type(character);
    }
    return traits_type::not_eof(character);
}

LibrarySilence::LibrarySilence() : m_stateBefore(std::cout.rdstate())
{
    std::cout.setstate(std::ios::failbit);
}

LibrarySilence::~LibrarySilence()
{
    std::cout.clear(m_stateBefore);
}
