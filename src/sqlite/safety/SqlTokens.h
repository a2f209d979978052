#pragma once

#include <cstddef>

/// A piece of an SQL text.
struct SqlToken {
    enum Kind : unsigned char { END, NAME, QUOTED_NAME, STRING, NUMBER, SYMBOL };

    Kind kind = END;
    const char* text = "";  ///< within the SQL text: not terminated, and without quotes
    std::size_t length = 0;

    bool isAnyName() const { return kind == NAME || kind == QUOTED_NAME; }
    bool isSymbol(char symbol) const { return kind == SYMBOL && *text == symbol; }

    /// @return whether this is the word, in any letter case. A quoted name is never a keyword.
    bool isWord(const char* word) const;

    /// Compares the texts in any letter case, as SQLite compares names.
    /// @return below, equal to or above 0, as this text stands before, at or after the other.
    int compare(const SqlToken& other) const;
};

/// Takes an SQL text apart, as far as it takes to see which names are used where; what is no SQL
/// comes as symbols.
class SqlTokens {
public:
    SqlTokens(const char* begin, const char* end) : m_at(begin), m_end(end) {}

    SqlToken next();

private:
    bool isAt(char first, char second) const;
    void skipSpaceAndComments();
    SqlToken quoted(char closing);
    SqlToken word();

    const char* m_at;
    const char* m_end;
};
