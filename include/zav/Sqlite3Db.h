#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "zav/SqlTbl.h"
#include "zav/export.h"

struct sqlite3;
struct FaultTypeDef;
struct Descriptions;

/// A receiver of result rows, one call per row: an interface for applications. The library itself
/// neither implements nor calls it.
class ZAV_EXPORT Sqlite3DbCallback {
public:
    virtual ~Sqlite3DbCallback();

    /// @param columnCount  number of entries in both arrays.
    /// @param values       the row's cells as NUL-terminated texts; null for an SQL NULL.
    /// @param names        the columns' names.
    /// @return 0 to go on; any other value to end the query.
    virtual int onRow(int columnCount, char** values, char** names) = 0;
};

/// The connection to one SQLite database file.
///
/// @note Not locked, by itself or by SQLite: one thread at a time.
class ZAV_EXPORT Sqlite3Db {
public:
    /// Opens nothing.
    ///
    /// @param dbgLevel  initial debug level; above 1, each successful getTbl() writes a line.
    explicit Sqlite3Db(std::uint32_t dbgLevel);

    Sqlite3Db(const Sqlite3Db&) = delete;
    Sqlite3Db& operator=(const Sqlite3Db&) = delete;

    /// Closes a database that is still open.
    virtual ~Sqlite3Db();

    /// Opens an existing database file. Nothing is created. One that is damaged, or no database at
    /// all, opens: its queries fail. Reading its schema takes no more than a query may.
    ///
    /// What a writer that died in mid-transaction has half done is rolled back, if the file, its
    /// journal and their folder can be written and the journal names no super-journal; otherwise
    /// the queries fail, and nothing is changed. The same holds for a writer that dies later.
    /// Nobody is waited for here: a file that others have locked opens at once, and a query then
    /// waits for up to 5 s.
    ///
    /// No SQL text can load an extension or damage the file on purpose, and the file's views call
    /// no function with side effects. A connection that can only read is held to more: no write of
    /// any kind, no temporary file, no further database (`ATTACH`, `VACUUM`), no trigger. It
    /// deletes nothing, and fails its queries where a "-journal", "-wal" or "-shm" is no regular
    /// file; a "-shm" with a second link is not written. What a query of it may be and take, and
    /// how it fails beyond:
    ///
    /// - a text, a blob or a row of 16 MiB: "string or blob too big" (18);
    /// - a pattern of `LIKE` or `GLOB` of 2,000 bytes: "LIKE or GLOB pattern too complex" (1);
    /// - an expression 200 deep: "Expression tree is too large (maximum depth 200)" (1);
    /// - 200 terms of a compound `SELECT`: "too many terms in compound SELECT" (1);
    /// - 172,032 instructions of SQLite's machine, 208,896 in a process of 32 bits: "out of
    ///   memory" (7);
    /// - 10 s of processor time, to a second: "interrupted" (9);
    /// - for its result 64 times the file's size, but at least 128 MiB: "interrupted" (9).
    ///
    /// A query of more than 100 bytes, or with a parenthesis, may be less:
    ///
    /// - a text of 1.5 times the file's size, but at least 16 KiB;
    /// - a shorter pattern on a small stack;
    /// - what the stack holds: "too little stack for the query" (1).
    ///
    /// And so may one that reaches a view, a generated column or a virtual table of the file:
    ///
    /// - 21,504 instructions, 26,112 in a process of 32 bits;
    /// - 100 columns: "too many columns in result set" (1);
    /// - 16 views and common table expressions over each other, and 100,000 nodes of expressions
    ///   once all are put together: "the query is too complex" (1);
    /// - and to its memory counts what SQLite needs to sort, for instance, and what other
    ///   connections of the process take meanwhile.
    ///
    /// @note A connection is used and closed on threads with no less stack than the one that opened
    ///       it: SQLite takes stack to let go of a schema, too. 16 KiB do for tables.
    ///
    /// @param path      path of a regular file, or of a link to one; never taken as a URI. The name
    ///                  ":memory:" opens an empty database in memory.
    /// @param readOnly  true: for reading only; false: for reading and writing, or only for reading
    ///                  where the file's permissions allow no more (see isReadOnly()).
    /// @return 0 open; -1 a database is open already and stays so; -2 the file could not be opened
    ///         (see lastCode() and lastErrorText()).
    int openDb(const std::string& path, bool readOnly);

    /// Closes the database.
    ///
    /// @return 0 closed; -1 none is open; -2 SQLite refused, since a statement is still alive: the
    ///         database stays open and usable.
    int closeDb();

    /// Runs an SQL text and collects its result as an array of texts, in the shape of SQLite's
    /// sqlite3_get_table(): first the column names, then the rows one after another; an SQL NULL
    /// is a null pointer. A result without rows may have no columns either.
    ///
    /// The caller sets the result and the error text to null and both numbers to 0 before.
    ///
    /// @param sql               the complete text, up to its first NUL. Of several statements each
    ///                          is run. Where a writer has died, or another process has changed
    ///                          the schema meanwhile, a connection that only reads runs the text
    ///                          again, after a rollback.
    /// @param[out] result       the array; the caller's, released with sqlite3_free_table().
    /// @param[out] rowCount     number of rows, the column names not counted.
    /// @param[out] columnCount  number of entries per row.
    /// @param[out] errorText    on failure SQLite's text, or null; the caller's, released with
    ///                          sqlite3_free().
    /// @return 0, or SQLite's result code of the failure; SQLITE_MISUSE (21) when no database is
    ///         open: nothing is written then.
    int getTable(const std::string& sql, char*** result, int* rowCount, int* columnCount,
                 char** errorText) const;

    /// Runs a `SELECT` and decodes each row of its result into a record.
    ///
    /// Cells that cannot be decoded never stop the query, see SqlTbl::setDatafromSqlResult(). On
    /// failure one line is written to standard output:
    /// `[ERROR] SQL3::getTbl() Sql Query failed: <SQLite's text> Err=<SQLite's code>`. When SQLite
    /// has no memory left even for that text, the line breaks off before it and `std::cout` is left
    /// in its bad state, silent until the application clears it.
    ///
    /// @tparam T            type of the list's elements, constructible from an R.
    /// @tparam R            record type of the table.
    /// @param query         the complete text, as for getTable().
    /// @param[out] records  emptied and filled, one element per row in the result's order, once the
    ///                      query has succeeded; untouched on a negative result.
    /// @param[in,out] table its columns are matched to the result's, which lasts (see
    ///                      SqlTbl::reorderColumns()), and its working record holds the last row
    ///                      afterwards. Not null.
    /// @return the number of records (0 or more); -1 no database is open (no line is written); -2
    ///         the query failed.
    /// @throws whatever an allocation, a table's own hook or a diagnostic line throws. Once rows
    ///         are decoded, the list then holds those before; SQLite's result or error text is not
    ///         released.
    template <class T, class R>
    int getTbl(const std::string& query, std::vector<T>& records, SqlTbl<R>* table);

    /// @return path of the open database, as it was passed; empty when none is open.
    const std::string& path() const { return m_path; }

    /// @return SQLite's result code of the last openDb() or closeDb() that returned 0 or -2; 0 at
    ///         first. For what is no regular file it is SQLITE_CANTOPEN (14).
    std::int32_t lastCode() const { return m_lastCode; }

    /// @return why the last openDb() or closeDb() that returned 0 or -2 has failed; empty if it has
    ///         not.
    const std::string& lastErrorText() const { return m_lastErrorText; }

    /// @return whether the open database can only be read; false when none is open.
    bool isReadOnly() const { return m_readOnly; }

    std::uint32_t m_dbgLevel;  ///< debug level: above 1, each successful getTbl() writes a line

    // The order of the members, public and private ones mixed, is that of the binary interface:
    // applications read them where they lie. The test abi/layout_test.cpp fails at a change.
private:
    std::string m_path;
    std::int32_t m_lastCode = 0;

public:
    /// 1 while a database is open, 0 otherwise. For reading: another value keeps getTbl() from
    /// running; set while a query runs, it leaves the query's memory to whoever set it.
    std::int32_t m_dbState = 0;

private:
    bool m_readOnly = false;
    std::string m_lastErrorText;
    sqlite3* m_pDb = nullptr;

    int fail(std::int32_t code, const char* errorText);
    int failQuery(char* errorText, int code) const;
    void finishQuery(char** result) const;
};

template <class T, class R>
int Sqlite3Db::getTbl(const std::string& query, std::vector<T>& records, SqlTbl<R>* table)
{
    if (m_dbState != 1) {
        return -1;
    }
    char** result = nullptr;
    int rowCount = 0;
    int columnCount = 0;
    char* errorText = nullptr;
    const int code = getTable(query, &result, &rowCount, &columnCount, &errorText);
    if (code != 0) {
        return failQuery(errorText, code);
    }
    records.clear();
    records.reserve(static_cast<std::size_t>(rowCount));
    const std::vector<std::string> columnNames(result, result + columnCount);
    table->reorderColumns(columnNames);
    char** row = result;
    for (int i = 0; i < rowCount; ++i) {
        row += columnCount;  // the first step passes over the column names
        table->setDatafromSqlResult(row);
        records.emplace_back(table->record);
    }
    finishQuery(result);
    return static_cast<int>(records.size());
}

extern template int Sqlite3Db::getTbl<FaultTypeDef, FaultTypeDef>(
    const std::string& query, std::vector<FaultTypeDef>& records, SqlTbl<FaultTypeDef>* table);
extern template int Sqlite3Db::getTbl<Descriptions, Descriptions>(
    const std::string& query, std::vector<Descriptions>& records, SqlTbl<Descriptions>* table);
