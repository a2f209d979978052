#include "support/sqliteMemory.h"

#include <dlfcn.h>
#include <sqlite3.h>

namespace {
TableMemory g_lastTableMemory;
}

NoSqliteMemory::NoSqliteMemory()
{
    sqlite3_hard_heap_limit64(1);
}

NoSqliteMemory::~NoSqliteMemory()
{
    sqlite3_hard_heap_limit64(0);
    sqlite3_soft_heap_limit64(0);  // the hard limit has lowered it
}

const TableMemory& lastTableMemory()
{
    return g_lastTableMemory;
}

// These stand before SQLite's own, since a program's functions come before those of its libraries.

// NOLINTNEXTLINE(readability-inconsistent-declaration-parameter-name): names that say more
int sqlite3_get_table(sqlite3* db, const char* sql, char*** result, int* rowCount, int* columnCount,
                      char** errorText)
{
    static const auto original =
        reinterpret_cast<decltype(&sqlite3_get_table)>(dlsym(RTLD_NEXT, "sqlite3_get_table"));
    const int code = original(db, sql, result, rowCount, columnCount, errorText);
    g_lastTableMemory = {*result, *errorText, g_lastTableMemory.calls + 1};
    return code;
}

void sqlite3_free_table(char** result)
{
    static const auto original =
        reinterpret_cast<decltype(&sqlite3_free_table)>(dlsym(RTLD_NEXT, "sqlite3_free_table"));
    if (result == g_lastTableMemory.result) {
        g_lastTableMemory.result = nullptr;
    }
    original(result);
}
