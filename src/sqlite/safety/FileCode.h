#pragma once

#include <cstdint>

#include "SqlTokens.h"
#include "SqliteMemory.h"

/// What SQLite needs to compile a query, at the most.
struct CompileCost {
    /// Of the expressions and tables of the query, once every view stands in it at each place that
    /// names it.
    std::uint32_t nodes = 0;
    std::uint32_t stackBytes = 0;
    std::uint32_t terms = 1;   ///< of a compound query
    std::uint32_t levels = 0;  ///< of pieces that name each other

    /// Adds a part that is compiled after those before: they share their stack.
    void add(const CompileCost& part);
};

/// The SQL that a database file brings along and that becomes part of the queries on it: views,
/// generated columns, virtual tables. It was written by whoever made the file, and SQLite compiles
/// it without a bound: views over views take as much stack as they are high, and where each names
/// the one below twice, they double at each step.
///
/// What there is no memory for is left out; hadMemory() tells.
class FileCode {
public:
    void clear();

    /// @param statement  a `CREATE` statement of the schema.
    void add(const char* statement);

    /// To be called once all statements have been added.
    void finish();

    /// @param[out] cost  of compiling the query; 0 nodes where it is plain.
    /// @return whether that is more than may be compiled.
    bool isTooMuch(const char* query, CompileCost& cost);

    /// @return whether code of the file is part of the query that isTooMuch() was last called for.
    bool takesPart() const { return m_takesPart; }

    /// @return whether code of the file is part of what has the name.
    bool has(const char* name) const;

    /// @return how often one of the statements at the most has a collation, which SQLite does not
    /// count into the depth of an expression.
    std::size_t mostCollations() const { return m_mostCollations; }

    /// @return whether there was memory for everything since clear().
    bool hadMemory() const { return m_hadMemory; }

private:
    /// A view, a table, a common table expression or a generated column.
    struct Piece {
        SqlToken name;
        const char* statement;  ///< in which it stands
        const char* begin;
        const char* end;
        bool isLocal;  ///< known only in its statement
        bool isQuery;
        CompileCost cost = {};  ///< 0 levels: not reckoned yet
    };
    class Reckoning;

    void sort();
    bool addObject(const char* statement);
    void addDefinitions(const char* statement, bool isQuery);
    void addPiece(const Piece& piece);
    Piece* firstNamed(const SqlToken& name) const;

    SqliteList<char> m_statements;  ///< those that hold code, each with its NUL
    SqliteList<Piece> m_pieces;     ///< in the order of their names, once finished
    std::size_t m_mostCollations = 0;
    std::uint32_t m_work = 0;  ///< tokens and pieces looked at to reckon a query
    bool m_takesPart = false;
    bool m_hadMemory = true;
};
