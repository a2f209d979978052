#pragma once

struct sqlite3;

/// Lets a connection keep a file of usual size in its page cache. It reads the schema: of a file
/// that cannot be read now, SQLite keeps its own cache.
void enlargePageCache(sqlite3* db) noexcept;
