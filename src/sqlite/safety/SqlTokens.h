#pragma once

#include <cstddef>

/// A piece of an SQL text.
struct SqlToken {
    enum Kind : unsigned char { END, NAME, QUOTED_NAME, STRING, NUMBER, SYMBOL };

    const char* text = "";  ///< within the SQL text: not terminated, and without quotes
    std::size_t length = 0;
    Kind kind = END;

    bool isSymbol(char symbol) const { return kind == SYMBOL && *text == symbol; }

    /// @param words  in lower case, each with a blank before and after it.
    bool isIn(const char* words) const;

    /// The same for keywords, which a quoted name never is.
    bool isOneOf(const char* words) const;

    /// Compares the texts as SQLite compares names, in any letter case.
    /// @return below, equal to or above 0, as this text stands before, at or after the other.
    int compare(const SqlToken& other) const;
};

/// Takes an SQL text apart, as far as it takes to see which names are used where; what is no SQL
/// comes as symbols. A token's neighbours tell what it is.
class SqlTokens {
public:
    /// @param end  one past the text; null for the text's NUL.
    explicit SqlTokens(const char* text, const char* end = nullptr);

    /// @return whether there is a further token, which then is the one that now() returns.
    bool advance();

    const SqlToken& last() const { return m_last; }
    const SqlToken& now() const { return m_now; }
    const SqlToken& next() const { return m_next; }
    const char* behindNow() const { return m_now.text + m_now.length; }  ///< of no quoted name

    bool opens() const { return m_now.isSymbol('('); }
    bool closes() const { return m_now.isSymbol(')'); }
    bool isQualifier() const { return m_next.isSymbol('.'); }
    bool isQualified() const { return m_last.isSymbol('.'); }
    bool isAlone() const { return m_last.isSymbol('(') && m_next.isSymbol(')'); }
    bool isAlias() const { return m_last.isOneOf(" as "); }
    bool isFunction() const { return m_next.isSymbol('('); }

    /// The FROM of `IS DISTINCT FROM`.
    bool comparesDistinct() const { return m_last.isOneOf(" distinct "); }

    /// Of a parenthesis: whether it stands behind a name in whatever quotes, or a keyword.
    bool opensArguments() const { return m_last.kind != SqlToken::SYMBOL; }

    /// The parenthesis of `name AS (...)` and of `name AS MATERIALIZED (...)`, which is how a
    /// common table expression is written, and a generated column.
    bool opensDefinition() const { return opens() && m_last.isOneOf(" as materialized "); }

    bool opensQuery() const { return opens() && m_next.isOneOf(" select with values "); }

private:
    SqlToken read();
    SqlToken readQuoted(char closing);
    SqlToken readWord();
    void skipSpaceAndComments();
    void skipUntil(char last);

    const char* m_at;
    const char* m_end;
    SqlToken m_last;
    SqlToken m_now;
    SqlToken m_next;
};
