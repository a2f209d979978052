#include "hardening.h"

#include <sqlite3.h>

#include <algorithm>

#include "../execute.h"

namespace {

/// The longest text, or whole row, that is read: room for eight texts of 1 MB in one row, small
/// enough that a damaged length cannot take the memory of a small device.
constexpr int MAX_LENGTH = 16 * 1024 * 1024;

/// What may be made of a smaller file's texts. One function call on two texts of this
/// length takes a tenth of a second.
constexpr int MIN_LENGTH = 16 * 1024;

/// Instructions of SQLite's machine. It allocates twice as many each time: of the first 172,032 can
/// be had, or 208,896 with pointers of 32 bits; of the second 21,504 or 26,112. A list of 50,000
/// codes fits.
constexpr int MAX_PROGRAM = 250000;
constexpr int MAX_PROGRAM_WITH_FILE_CODE = 30000;

constexpr int MAX_EXPRESSION_DEPTH = 200;
constexpr int MAX_COMPOUND_TERMS = 200;
constexpr int MAX_PATTERN = 2000;

/// A row is made whole before the budget is looked at: so many of the longest texts are in it.
constexpr int MAX_COLUMNS_WITH_FILE_CODE = 100;

/// Per wildcard of a pattern, which takes two bytes of it with the letter behind it.
constexpr std::size_t STACK_OF_WILDCARD = 160;

/// Of the schema: SQLite compares each key of a table with all before it.
constexpr int MAX_STATEMENT = 256 * 1024;

/// Has no more COLLATE, which SQLite does not count into a depth, than a usual stack holds.
constexpr int USUAL_STATEMENT = 3 * 1024;

constexpr int USUAL_COLUMNS = 16;
constexpr int USUAL_DEPTH = 4;

constexpr std::size_t STACK_OF_READING = 5UL * 1024;

/// Of an expression in the schema, per operator: what a function of an index takes.
constexpr std::size_t STACK_OF_DEPTH = 320;

/// Longer than the statements with which SQLite makes its schema table and reads it.
constexpr int LINE = 80;

/// Neither ATTACH nor VACUUM INTO can open or make a further file.
constexpr int ATTACHED_FILES = 0;

/// As far as SQLite goes by itself.
constexpr int WIDEST = 0x7fffffff;

constexpr int AS_IT_IS = -1;

/// By SQLite's numbers: the length of a text, and of an SQL text; columns, the depth of an
/// expression, the terms of a compound, the steps of a program, arguments, attached files, the
/// length of a pattern.
using Limits = int[SQLITE_LIMIT_LIKE_PATTERN_LENGTH + 1];

void set(sqlite3* db, const Limits& limits)
{
    int limit = 0;
    for (const int value : limits) {
        sqlite3_limit(db, limit++, value);
    }
}

enum Switch : int { OFF = 0, ON = 1 };

void configure(sqlite3* db, int option, Switch value)
{
    sqlite3_db_config(db, option, static_cast<int>(value),
                      nullptr);  // refused by a SQLite that lacks the option
}

}  // namespace

void harden(sqlite3* db) noexcept
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
    // The file is read-only by its opening; this takes in temporary tables. A view that sorts its
    // rows must not put them into a temporary file.
    execute(db, "PRAGMA query_only=ON;PRAGMA temp_store=MEMORY");
}

void limitToUsualSchema(sqlite3* db)
{
    static constexpr Limits LIMITS = {MAX_STATEMENT, USUAL_STATEMENT, USUAL_COLUMNS,
                                      USUAL_DEPTH,   WIDEST,          MAX_PROGRAM_WITH_FILE_CODE,
                                      AS_IT_IS,      ATTACHED_FILES,  AS_IT_IS};
    set(db, LIMITS);
}

std::size_t schemaDepth(std::size_t stackLeft)
{
    const std::size_t stack = std::max(stackLeft, STACK_OF_READING) - STACK_OF_READING;
    return std::max<std::size_t>(stack / STACK_OF_DEPTH, USUAL_DEPTH);
}

void limitSchema(sqlite3* db, std::size_t depth)
{
    static constexpr Limits LIMITS = {MAX_LENGTH, MAX_STATEMENT,  WIDEST,
                                      AS_IT_IS,   WIDEST,         MAX_PROGRAM_WITH_FILE_CODE,
                                      AS_IT_IS,   ATTACHED_FILES, AS_IT_IS};
    set(db, LIMITS);
    sqlite3_limit(db, SQLITE_LIMIT_EXPR_DEPTH,
                  static_cast<int>(std::min<std::size_t>(depth, WIDEST)));
}

void PassingOverSchema::set(bool passesOver)
{
#ifdef SQLITE_DBCONFIG_WRITABLE_SCHEMA  // 3.28
    // It makes nothing writable that is not: what matters is that SQLite goes on after an error.
    configure(m_db, SQLITE_DBCONFIG_WRITABLE_SCHEMA, passesOver ? ON : OFF);
    sqlite3_limit(m_db, SQLITE_LIMIT_SQL_LENGTH, passesOver ? LINE : MAX_STATEMENT);
#endif
}

void limitQuery(sqlite3* db)
{
    static constexpr Limits LIMITS = {
        MAX_LENGTH,  WIDEST,   WIDEST,         MAX_EXPRESSION_DEPTH, MAX_COMPOUND_TERMS,
        MAX_PROGRAM, AS_IT_IS, ATTACHED_FILES, MAX_PATTERN};
    set(db, LIMITS);
}

void limitTexts(sqlite3* db, long long fileSize, std::size_t stackLeft)
{
    // UTF-16 in the file takes up to half as much again in UTF-8.
    const long long longest = std::max<long long>(fileSize + fileSize / 2, MIN_LENGTH);
    const std::size_t pattern = stackLeft / 2 / STACK_OF_WILDCARD * 2;
    sqlite3_limit(db, SQLITE_LIMIT_LENGTH,
                  static_cast<int>(std::min<long long>(longest, MAX_LENGTH)));
    sqlite3_limit(db, SQLITE_LIMIT_LIKE_PATTERN_LENGTH,
                  static_cast<int>(std::min<std::size_t>(pattern, MAX_PATTERN)));
}

void limitFileCode(sqlite3* db)
{
    sqlite3_limit(db, SQLITE_LIMIT_COLUMN, MAX_COLUMNS_WITH_FILE_CODE);
    sqlite3_limit(db, SQLITE_LIMIT_VDBE_OP, MAX_PROGRAM_WITH_FILE_CODE);
}
