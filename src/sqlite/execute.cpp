#include "execute.h"

#include <sqlite3.h>

int execute(sqlite3* db, const char* sql) noexcept
{
    return sqlite3_exec(db, sql, nullptr, nullptr, nullptr);
}
