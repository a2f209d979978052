#include "hotJournal.h"

#include <sqlite3.h>

#include <memory>

bool needsRollback(sqlite3* db)
{
    return sqlite3_extended_errcode(db) == SQLITE_READONLY_ROLLBACK;
}

void readHeader(sqlite3* db)
{
    sqlite3_exec(db, "PRAGMA schema_version", nullptr, nullptr, nullptr);
}

void rollBack(sqlite3* db, int busyTimeoutMs)
{
    sqlite3* opened = nullptr;
    const int code = sqlite3_open_v2(sqlite3_db_filename(db, "main"), &opened,
                                     SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr);
    const std::unique_ptr<sqlite3, decltype(&sqlite3_close)> writer(opened, sqlite3_close);
    if (code == SQLITE_OK) {
        sqlite3_busy_timeout(writer.get(), busyTimeoutMs);
        readHeader(writer.get());  // SQLite rolls back before it reads
    }
}
