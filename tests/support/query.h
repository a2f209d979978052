#pragma once

#include <string>

#include "zav/Sqlite3Db.h"

/// Runs an SQL text through Sqlite3Db::getTable().
/// @return the result's entries from the column names on, separated by "|", NULL as "NULL"; after a
///         failure "<code>: <SQLite's text>".
std::string query(const Sqlite3Db& db, const std::string& sql);
