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
    bool isKnown = true;       ///< false: there was no memory to reckon it

    /// A part's stack is free again for the next one.
    void add(const CompileCost& part);
};

/// The SQL that a database file brings along and that becomes part of the queries on it: views,
/// generated columns, virtual tables. It was written by whoever made the file, and SQLite compiles
/// it without a bound: views over views take as much stack as they are high, and where each names
/// the one below twice, they double at each step.
class FileCode {
public:
    void clear();

    /// @param statement  a `CREATE` statement of the schema.
    /// @return whether there was memory for it.
    bool add(const char* statement);

    /// To be called once all statements have been added.
    ///
    /// @return whether there was memory for it.
    bool finish();

    /// @param[out] cost         of compiling the query; 0 nodes where it is plain.
    /// @param[out] reachesCode  whether code of the file becomes part of the query.
    /// @return the first name in the query whose code is more than may be compiled; a token of the
    ///         kind END when all may be.
    SqlToken tooMuchIn(const char* query, CompileCost& cost, bool& reachesCode) const;

    /// @return whether code of the file is part of what has the name.
    bool has(const char* name) const;

private:
    /// A view, a table, a common table expression or a generated column.
    struct Piece {
        SqlToken name;
        const char* statement;  ///< in which it stands
        const char* begin;
        const char* end;
        bool isLocal;  ///< known only in its statement
        bool isQuery;
        mutable CompileCost cost = {};  ///< once it has been reckoned: 0 levels before
    };
    class Reckoning;

    void sort();
    CompileCost costOfText(const char* query) const;
    bool addObject(const char* statement);
    bool addDefinitions(const char* statement);
    const Piece* firstNamed(const SqlToken& name) const;

    SqliteList<char> m_statements;  ///< those that hold code, each with its NUL
    SqliteList<Piece> m_pieces;     ///< in the order of their names, once finished
};
