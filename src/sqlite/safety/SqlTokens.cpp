#include "SqlTokens.h"

#include <sqlite3.h>

#include <cstring>

namespace {

bool isDigit(char letter)
{
    return letter >= '0' && letter <= '9';
}

/// Every byte of a letter outside of ASCII may be part of a name.
bool isOfAName(char letter)
{
    const char lower = static_cast<char>(letter | 0x20);
    return (lower >= 'a' && lower <= 'z') || isDigit(letter) || letter == '_' || letter == '$' ||
           (letter & 0x80) != 0;
}

/// White space to SQLite, except within a name.
constexpr const char* BYTE_ORDER_MARK = "\xef\xbb\xbf";

/// What closes a quoted name or text, and but for the bracket opens it as well.
bool isQuote(char letter)
{
    return letter == '"' || letter == '`' || letter == '\'' || letter == ']';
}

bool isSpace(char letter)
{
    return letter == ' ' || (letter >= '\t' && letter <= '\r');
}

}  // namespace

bool SqlToken::isIn(const char* words) const
{
    for (const char* word = words; word[1] != '\0'; ++word) {
        if (*word == ' ' && sqlite3_strnicmp(word + 1, text, static_cast<int>(length)) == 0 &&
            word[length + 1] == ' ') {
            return true;
        }
    }
    return false;
}

bool SqlToken::isOneOf(const char* words) const
{
    return kind == NAME && isIn(words);
}

int SqlToken::compare(const SqlToken& other) const
{
    const std::size_t common = length < other.length ? length : other.length;
    const int order = sqlite3_strnicmp(text, other.text, static_cast<int>(common));
    return order != 0 ? order : static_cast<int>(length) - static_cast<int>(other.length);
}

SqlTokens::SqlTokens(const char* text, const char* end)
    : m_at(text), m_end(end != nullptr ? end : text + std::strlen(text))
{
    m_next = read();
}

bool SqlTokens::advance()
{
    m_last = m_now;
    m_now = m_next;
    m_next = read();
    return m_now.kind != SqlToken::END;
}

SqlToken SqlTokens::read()
{
    skipSpaceAndComments();
    if (m_at == m_end) {
        return {};
    }
    if (isOfAName(*m_at)) {
        return readWord();
    }
    const char closing = *m_at == '[' ? ']' : *m_at;
    return isQuote(closing) ? readQuoted(closing) : SqlToken{m_at++, 1, SqlToken::SYMBOL};
}

void SqlTokens::skipSpaceAndComments()
{
    while (m_at != m_end) {
        const char following = m_end - m_at > 1 ? m_at[1] : '\0';
        if (isSpace(*m_at)) {
            ++m_at;
        } else if (m_end - m_at >= 3 && std::memcmp(m_at, BYTE_ORDER_MARK, 3) == 0) {
            m_at += 3;
        } else if (*m_at == '-' && following == '-') {
            skipUntil('\n');
        } else if (*m_at == '/' && following == '*') {
            m_at += 2;
            do {
                skipUntil('*');
            } while (m_at != m_end && *m_at != '/');
            m_at += m_at != m_end ? 1 : 0;
        } else {
            return;
        }
    }
}

void SqlTokens::skipUntil(char last)
{
    while (m_at != m_end && *m_at++ != last) {
    }
}

// A name is as long as it has no quote in it: it can be written in several ways, with the quote
// doubled in some of them, and names that are cut short alike are taken for the same.
SqlToken SqlTokens::readQuoted(char closing)
{
    const char* const text = ++m_at;
    skipUntil(closing);
    const char* end = text;
    while (end != m_at && !isQuote(*end)) {
        ++end;
    }
    return {text, static_cast<std::size_t>(end - text),
            closing == '\'' ? SqlToken::STRING : SqlToken::QUOTED_NAME};
}

SqlToken SqlTokens::readWord()
{
    const char* const text = m_at;
    while (m_at != m_end && isOfAName(*m_at)) {
        ++m_at;
    }
    // In a variable, $name(...), quotes mean nothing.
    if (m_at != m_end && *m_at == '(' && (*text == '$' || m_next.isIn(" @ : # "))) {
        skipUntil(')');
    }
    return {text, static_cast<std::size_t>(m_at - text),
            isDigit(*text) ? SqlToken::NUMBER : SqlToken::NAME};
}
