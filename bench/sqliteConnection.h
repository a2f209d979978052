#pragma once

#include <sqlite3.h>

#include <memory>
#include <stdexcept>
#include <string>

#include "Reader.h"

using SqliteConnection = std::unique_ptr<sqlite3, decltype(&sqlite3_close)>;

inline void check(int code, sqlite3* db)
{
    if (code != SQLITE_OK) {
        throw std::runtime_error(sqlite3_errmsg(db));
    }
}

inline SqliteConnection openConnection(const std::string& file, int furtherFlags = 0)
{
    sqlite3* opened = nullptr;
    const int code =
        sqlite3_open_v2(file.c_str(), &opened, SQLITE_OPEN_READONLY | furtherFlags, nullptr);
    SqliteConnection db(opened, sqlite3_close);
    check(code, db.get());
    check(sqlite3_exec(db.get(), PAGE_CACHE_SQL, nullptr, nullptr, nullptr), db.get());
    return db;
}
