#pragma once

#include <optional>
#include <string>
#include <vector>

struct sqlite3;
struct sqlite3_stmt;

/// A cell of the file in SQLite's text form, before the library has made anything of it.
struct RawCell {
    bool isNull;
    std::string bytes;  ///< all of them, NUL bytes included

    /// @return what reaches the library: texts end at their first NUL byte there.
    std::string text() const { return bytes.substr(0, bytes.find('\0')); }
};

/// A table of the file as `SELECT *` returns it.
struct RawTable {
    std::vector<std::string> columns;
    std::vector<std::vector<RawCell>> rows;
};

/// A database file as SQLite sees it, opened read-only beside the library. All that is read shows
/// one state of the file.
class RawDatabase {
public:
    /// @throws UnreadableFile
    explicit RawDatabase(const std::string& file);
    ~RawDatabase();
    RawDatabase(const RawDatabase&) = delete;
    RawDatabase& operator=(const RawDatabase&) = delete;

    /// @return nothing if there is no such table, or none that can be selected from.
    /// @throws UnreadableFile
    std::optional<RawTable> table(const std::string& name) const;

    /// @return whether SQLite accepts the statement; nothing is run.
    /// @throws UnreadableFile
    bool accepts(const std::string& sql) const;

    /// @param condition  on a row, as SQL; delivered(column, kind) in it is the number that the
    ///                   library delivers of the column in a field of that FieldKind.
    /// @return for each row of a table, in the order of table(), whether the condition holds; empty
    ///         if SQLite takes no such query.
    /// @throws UnreadableFile
    std::vector<bool> holds(const std::string& condition, const std::string& name) const;

    /// @return whether SQLite would read a table from end to end for the query.
    /// @throws UnreadableFile
    bool readsWholeTable(const std::string& query) const;

private:
    class Statement;

    [[noreturn]] void fail() const;

    std::string m_file;
    sqlite3* m_db = nullptr;
};
