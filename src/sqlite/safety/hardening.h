#pragma once

#include <cstddef>

struct sqlite3;

/// Keeps a connection from what a file made to do harm could make SQLite do. The tables and
/// ordinary views of the file read as ever.
///
/// Everything here is a second wall: what this SQLite lacks is skipped, since a device with an
/// older one is better off reading than not.
void harden(sqlite3* db);

/// Keeps a connection that only reads from leaving anything behind: no write, no further file.
void restrictToReading(sqlite3* db);

/// Bounds the schema that a connection reads next: what it holds is compiled only when it is used.
void limitSchema(sqlite3* db);

/// Bounds the next query to what an application may ask for: far more than it does.
void limitQuery(sqlite3* db);

/// Bounds the next query further, since code that came with the file is part of it: to texts that
/// the file can hold, and to what takes no more than the stack.
void limitQueryWithFileCode(sqlite3* db, long long fileSize, std::size_t stackLeft);
