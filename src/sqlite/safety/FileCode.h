#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "SqlTokens.h"

/// What SQLite needs to compile a query, at the most.
struct CompileCost {
    /// Of the expressions and tables of the query, once every view stands in it at each place that
    /// names it.
    std::uint64_t nodes = 0;
    std::uint64_t stackBytes = 0;
    bool comparesPatterns = false;  ///< while it runs: LIKE and GLOB take stack by their pattern

    /// A part's stack is free again for the next one.
    void add(const CompileCost& part);
};

/// The SQL that a database file brings along and that becomes part of the queries on it: views,
/// generated columns, virtual tables. It was written by whoever made the file, and SQLite compiles
/// it without a bound: views over views take as much stack as they are high, and what names the one
/// below twice doubles at each step.
class FileCode {
public:
    /// @param statements  the `CREATE` statements of the whole schema.
    void read(std::vector<std::string> statements);

    /// @return the first name in a query whose code exceeds what is compiled; a token of the kind
    ///         END when all may be compiled.
    /// @param[out] cost  of all code that the query reaches; 0 nodes when it reaches none.
    SqlToken tooMuchIn(const std::string& query, CompileCost& cost) const;

    /// @return whether the file's own code is part of what has the name.
    bool has(const char* name) const;

private:
    /// A view, a table, a common table expression or a generated column.
    struct Piece {
        SqlToken name;
        const std::string* statement;  ///< in which it stands
        bool isLocal;                  ///< known only there
        bool isQuery;
        const char* begin;
        const char* end;
    };
    class Reckoning;

    void addObject(const std::string& statement);
    void addDefinitions(const std::string& statement);
    std::pair<std::vector<Piece>::const_iterator, std::vector<Piece>::const_iterator> piecesNamed(
        const SqlToken& name) const;

    std::vector<std::string> m_statements;  ///< only those that hold code
    std::vector<Piece> m_pieces;            ///< in the order of their names
};
