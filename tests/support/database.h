#pragma once

#include <string>

/// Runs SQL on a database file, which is created if it is missing. Throws std::runtime_error with
/// SQLite's text on a failure.
void runSql(const std::string& file, const std::string& sql);

/// The `CREATE` statements of both tables, from db/schema.sql.
std::string schemaSql();

/// Makes a database file with both tables, then runs further SQL on it.
/// @return the file's path, as passed.
std::string makeDatabase(const std::string& file, const std::string& furtherSql = "");
