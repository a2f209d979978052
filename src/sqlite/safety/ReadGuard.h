#pragma once

#include "CompanionVfs.h"
#include "FileCode.h"
#include "HotJournal.h"

class QueryBudget;

/// Stands between a connection that only reads and a file that may have been made to do harm, or
/// that a writer has left half changed.
///
/// It is the VFS of the connection (CompanionVfs). It reads the schema and keeps the SQL in it
/// (FileCode), checks each query against that, runs it within limits (hardening.h) and a budget
/// (QueryBudget), and has a dead writer's transaction rolled back (HotJournal).
class ReadGuard : public CompanionVfs, public InSqliteMemory {
public:
    /// Opens a database for reading, with a guard, which goes when the connection is closed, by
    /// whomever.
    ///
    /// @param[out] db         null on failure.
    /// @param[out] errorText  on failure SQLite's, to be released with sqlite3_free(); null without
    ///                        memory even for that.
    /// @return SQLite's result code.
    static int open(const char* path, sqlite3** db, char** errorText) noexcept;

    /// @return the guard of a connection; null where it has none.
    static ReadGuard* of(sqlite3* db) noexcept
    {
        return static_cast<ReadGuard*>(CompanionVfs::of(db));
    }

    /// Reads the schema, rolling back first what a dead writer has left. A failure is left to the
    /// first query.
    void start(sqlite3* db) noexcept;

    /// Where the results of sqlite3_get_table() go.
    struct Table {
        char*** result;
        int* rowCount;
        int* columnCount;
        char** errorText;
    };

    /// sqlite3_get_table(), within bounds.
    ///
    /// @param busyTimeoutMs  how long to wait for others before a rollback.
    int getTable(const char* sql, const Table& table, int busyTimeoutMs) noexcept;

private:
    ReadGuard() noexcept : CompanionVfs(Use::READING) {}

    static void destroy(void* guard);
    static int authorize(void* guard, int action, const char* first, const char* second,
                         const char* schema, const char* view);

    int run(const char* sql, const Table& table, QueryBudget& budget);
    int runChecked(const char* sql, const Table& table, QueryBudget& budget);
    int runWithin(QueryBudget& budget, const char* sql, const Table& table, bool withFileCode);
    int runNow(const char* sql, const Table& table);
    int readSchema(char** errorText);
    int readUsualSchema();
    int readUnusualSchema(char** errorText);
    int lookAtStatements();
    int readStatements();
    void forgetSchema();

    sqlite3* m_db = nullptr;
    int m_schemaSize = 0;  ///< bytes in memory of the schema that m_fileCode is of; 0: not read
    bool m_readsSchema = false;
    bool m_hasLostSchema = false;
    FileCode m_fileCode;
    HotJournal m_hotJournal;
};
