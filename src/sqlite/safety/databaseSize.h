#pragma once

struct sqlite3;

/// @return bytes of the files that a connection has open, whatever their paths name by now: the
///         database and, in WAL mode, its log, in which most of it may still be. 0 in memory.
long long databaseSize(sqlite3* db);
