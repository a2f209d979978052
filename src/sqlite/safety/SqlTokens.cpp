#include "SqlTokens.h"

#include <sqlite3.h>

#include <algorithm>
#include <cstring>

namespace {

bool isDigit(char letter)
{
    return letter >= '0' && letter <= '9';
}

/// Every byte of a letter outside of ASCII may be part of a name.
bool isOfAName(char letter)
{
    return (letter >= 'a' && letter <= 'z') || (letter >= 'A' && letter <= 'Z') ||
           isDigit(letter) || letter == '_' || letter == '$' ||
           static_cast<unsigned char>(letter) >= 0x80;
}

bool isSpace(char letter)
{
    return letter == ' ' || (letter >= '\t' && letter <= '\r');
}

}  // namespace

bool SqlToken::isWord(const char* word) const
{
    return kind == NAME && length == std::strlen(word) &&
           sqlite3_strnicmp(text, word, static_cast<int>(length)) == 0;
}

int SqlToken::compare(const SqlToken& other) const
{
    const std::size_t common = std::min(length, other.length);
    const int order = sqlite3_strnicmp(text, other.text, static_cast<int>(common));
    if (order != 0 || length == other.length) {
        return order;
    }
    return length < other.length ? -1 : 1;
}

SqlToken SqlTokens::next()
{
    skipSpaceAndComments();
    if (m_at == m_end) {
        return {};
    }
    switch (*m_at) {
    case '"':
    case '`':
    case '\'':
        return quoted(*m_at);
    case '[':
        return quoted(']');
    default:
        return isOfAName(*m_at) ? word() : SqlToken{SqlToken::SYMBOL, m_at++, 1};
    }
}

bool SqlTokens::isAt(char first, char second) const
{
    return m_end - m_at >= 2 && m_at[0] == first && m_at[1] == second;
}

void SqlTokens::skipSpaceAndComments()
{
    while (m_at != m_end) {
        if (isSpace(*m_at)) {
            ++m_at;
        } else if (isAt('-', '-')) {
            m_at = std::find(m_at, m_end, '\n');
        } else if (isAt('/', '*')) {
            constexpr char CLOSING[] = {'*', '/'};
            const char* const closing = std::search(m_at + 2, m_end, CLOSING, CLOSING + 2);
            m_at = closing == m_end ? m_end : closing + 2;
        } else {
            return;
        }
    }
}

// A doubled quote within a name or a string begins the next one: that the two are one matters to
// nobody here.
SqlToken SqlTokens::quoted(char closing)
{
    const SqlToken::Kind kind = closing == '\'' ? SqlToken::STRING : SqlToken::QUOTED_NAME;
    const char* const text = m_at + 1;
    const char* const end = std::find(text, m_end, closing);
    m_at = end == m_end ? m_end : end + 1;
    return {kind, text, static_cast<std::size_t>(end - text)};
}

SqlToken SqlTokens::word()
{
    const char* const text = m_at;
    m_at = std::find_if_not(m_at, m_end, isOfAName);
    return {isDigit(*text) ? SqlToken::NUMBER : SqlToken::NAME, text,
            static_cast<std::size_t>(m_at - text)};
}
