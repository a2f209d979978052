#pragma once

struct sqlite3;

/// Keeps a connection from what a file made to do harm could make SQLite do. The tables and
/// ordinary views of the file read as ever.
///
/// Everything here is a second wall: what this SQLite lacks is skipped, since a device with an
/// older one is better off reading than not.
void harden(sqlite3* db);

/// Keeps a connection that only reads from leaving anything behind: no write, no further file.
void restrictToReading(sqlite3* db);
