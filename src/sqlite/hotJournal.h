#pragma once

struct sqlite3;

/// A writer that dies in mid-transaction, in a power cut for instance, leaves its journal beside a
/// half-changed file. A read-only connection can then read nothing ("attempt to write a readonly
/// database") until a connection that may write has rolled the file back.

/// The smallest read there is: of the file's first page. It succeeds on any schema, and its failure
/// is left to needsRollback() and to the next query.
void readHeader(sqlite3* db);

/// @return whether a journal to be rolled back is why the last operation on the connection failed.
bool needsRollback(sqlite3* db);

/// Lets SQLite roll back the connection's file through a connection of its own. Where the file or
/// its folder cannot be written, nothing changes: the next read fails as the last one did.
///
/// @param busyTimeoutMs  how long to wait for another process that may be at it already.
void rollBack(sqlite3* db, int busyTimeoutMs);
