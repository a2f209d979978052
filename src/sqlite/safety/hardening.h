#pragma once

#include <cstddef>

struct sqlite3;

/// Keeps a connection from what a file made to do harm could make SQLite do. The tables and
/// ordinary views of the file read as ever.
///
/// Everything here is a second wall: what this SQLite lacks is skipped, since a device with an
/// older one is better off reading than not.
void harden(sqlite3* db) noexcept;

/// Keeps a connection that only reads from leaving anything behind: no write, no further file.
void restrictToReading(sqlite3* db);

/// Bounds the schema that a connection reads next to a usual one. SQLite reads its statistics along
/// with it, which may be generated columns: what little these can be here takes 20 KB of stack.
void limitToUsualSchema(sqlite3* db);

/// Bounds it to what SQLite itself allows, as far as the stack goes.
void limitSchema(sqlite3* db, std::size_t stackLeft);

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

/// Bounds the next query to what an application may ask for: far more than it does.
void limitQuery(sqlite3* db);

/// After limitQuery(), bounds a query that does more than read a table: to texts that the file can
/// hold, and to patterns for which the stack does.
void limitTexts(sqlite3* db, long long fileSize, std::size_t stackLeft);

/// And one of which code that came with the file is part to what that may be.
void limitFileCode(sqlite3* db);
