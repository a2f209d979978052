#include "hardening.h"

#include <sqlite3.h>

namespace {

/// The longest text, or whole row, that is read: room for eight texts of 1 MB in one row, small
/// enough that a damaged length cannot take the memory of a small device.
constexpr int MAX_LENGTH = 16 * 1024 * 1024;

enum Switch : int { OFF = 0, ON = 1 };

void configure(sqlite3* db, int option, Switch value)
{
    sqlite3_db_config(db, option, static_cast<int>(value),
                      nullptr);  // refused by a SQLite that lacks the option
}

void execute(sqlite3* db, const char* sql)
{
    sqlite3_exec(db, sql, nullptr, nullptr, nullptr);
}

}  // namespace

void harden(sqlite3* db)
{
    // No code from a file named in an SQL text.
    configure(db, SQLITE_DBCONFIG_ENABLE_LOAD_EXTENSION, OFF);
    // A tokenizer is given as the address of its code: an SQL text must not choose one.
    configure(db, SQLITE_DBCONFIG_ENABLE_FTS3_TOKENIZER, OFF);
#ifdef SQLITE_DBCONFIG_DEFENSIVE  // 3.26
    // No SQL text may damage the file on purpose, by its schema table or behind a virtual table.
    configure(db, SQLITE_DBCONFIG_DEFENSIVE, ON);
#endif
#ifdef SQLITE_DBCONFIG_TRUSTED_SCHEMA  // 3.31
    // The file's views call only functions without side effects.
    configure(db, SQLITE_DBCONFIG_TRUSTED_SCHEMA, OFF);
#endif
    // A damaged page is found before its cells are read, not while they are.
    execute(db, "PRAGMA cell_size_check=ON");
}

void restrictToReading(sqlite3* db)
{
    // A trigger is the file's own program, and reading never needs one.
    configure(db, SQLITE_DBCONFIG_ENABLE_TRIGGER, OFF);
    // Neither ATTACH nor VACUUM INTO can open or make a further file.
    sqlite3_limit(db, SQLITE_LIMIT_ATTACHED, 0);
    sqlite3_limit(db, SQLITE_LIMIT_LENGTH, MAX_LENGTH);
    // The file is read-only by its opening; this takes in temporary tables.
    execute(db, "PRAGMA query_only=ON");
    // A view that sorts its rows must not put them into a temporary file.
    execute(db, "PRAGMA temp_store=MEMORY");
}
