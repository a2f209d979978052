#pragma once

struct sqlite3;

/// Runs a statement without a result.
///
/// @return SQLite's result code.
int execute(sqlite3* db, const char* sql) noexcept;
