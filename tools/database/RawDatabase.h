#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "RawCell.h"

struct sqlite3;
struct sqlite3_stmt;

/// The current row of a query.
class RawRow {
public:
    explicit RawRow(sqlite3_stmt* statement) : m_statement(statement) {}

    /// To be called once the statement has another row: a type is known only until a text is made
    /// of the cell.
    void noteTypes();

    int columnCount() const;

    /// @return what holds as long as the row is the current one.
    RawCellView cell(int index) const;

private:
    sqlite3_stmt* m_statement;
    std::vector<CellType> m_types;
};

/// A database file as SQLite sees it, opened read-only beside the library and hardened as by it.
/// All that is read shows one state of the file.
class RawDatabase {
public:
    /// @throws FailedQuery if the file cannot be opened or its schema not be read.
    explicit RawDatabase(const std::string& file);
    ~RawDatabase();
    RawDatabase(const RawDatabase&) = delete;
    RawDatabase& operator=(const RawDatabase&) = delete;

    /// @return the names as `SELECT *` returns them; nothing if there is no such table or view, or
    ///         none that can be selected from.
    /// @throws FailedQuery
    std::optional<std::vector<std::string>> columnsOf(const std::string& table) const;

    /// @return whether what has the name of a table is none, but a view or a virtual table.
    /// @throws FailedQuery
    bool isView(const std::string& table) const;

    /// @return whether SQLite accepts the statement; nothing is run.
    /// @throws FailedQuery
    bool accepts(const std::string& sql) const;

    /// Runs a query. In it, delivered(column, kind) is the number that the library delivers of the
    /// column in a field of that FieldKind.
    ///
    /// @param take  called for each row in turn.
    /// @throws FailedQuery, or what `take` throws
    void read(const std::string& sql, const std::function<void(const RawRow&)>& take) const;

    /// Runs a query once for each of many numbers.
    ///
    /// @param sql   with ?1 in the place of the number.
    /// @param take  called for each row in turn, with the number that it is found by.
    /// @throws FailedQuery, or what `take` throws
    void readFor(const std::vector<std::int64_t>& numbers, const std::string& sql,
                 const std::function<void(std::int64_t, const RawRow&)>& take) const;

    /// @return whether SQLite would read a table from end to end for the query.
    /// @throws FailedQuery
    bool readsWholeTable(const std::string& query) const;

private:
    class Statement;

    [[noreturn]] void fail() const;

    sqlite3* m_db = nullptr;
};
