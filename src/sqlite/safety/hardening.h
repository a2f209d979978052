#pragma once

#include <cstddef>

struct sqlite3;

// SQLite's settings against a file that was made to do harm. Each connection gets harden(). One
// that only reads gets restrictToReading() besides, one of the two limits of the schema before the
// schema is read, and the limits of a query before each query.

/// Switches off what a file could abuse: extensions, changes of the schema table, functions with
/// side effects in views. Its tables and ordinary views read as ever. A setting that an older
/// SQLite lacks is skipped: a device with one is better off reading than not.
void harden(sqlite3* db) noexcept;

/// Allows no write, no trigger and no temporary file.
void restrictToReading(sqlite3* db);

/// Allows a schema that is little larger than a usual one. SQLite reads its statistics along with
/// it, which may be generated columns: the longest that are allowed here take 20 KB of stack.
void limitToUsualSchema(sqlite3* db);

/// @param stackLeft  bytes.
/// @return how deep the expressions of a schema may be there.
std::size_t schemaDepth(std::size_t stackLeft);

/// Allows any schema that SQLite itself allows, but for deeper expressions.
void limitSchema(sqlite3* db, std::size_t depth);

/// While it lives, SQLite passes over every statement of the schema that is longer than a line: the
/// file's code is not compiled, and can be read as text.
class PassingOverSchema {
public:
    explicit PassingOverSchema(sqlite3* db) : m_db(db) { set(true); }
    ~PassingOverSchema() { set(false); }
    PassingOverSchema(const PassingOverSchema&) = delete;
    PassingOverSchema& operator=(const PassingOverSchema&) = delete;

private:
    void set(bool passesOver);

    sqlite3* m_db;
};

/// Bounds the next query, far beyond what an application asks for.
void limitQuery(sqlite3* db);

/// After limitQuery(), for a query that does more than read a table: bounds texts by the size of
/// the file, and patterns by the stack.
void limitTexts(sqlite3* db, long long fileSize, std::size_t stackLeft);

/// After both, for a query that has code of the file in it: bounds its columns and instructions.
void limitFileCode(sqlite3* db);
