#pragma once

#include <sys/stat.h>

struct sqlite3;

/// What a writer that dies in mid-transaction, in a power cut for instance, leaves behind: its
/// journal beside a half-changed file. A read-only connection can then read nothing ("attempt to
/// write a readonly database") until a connection that may write has rolled the file back.
class HotJournal {
public:
    /// @return whether such a journal is why the last operation on a connection failed.
    static bool blocks(sqlite3* db) noexcept;

    /// Lets SQLite roll back a connection's file through a connection of its own.
    ///
    /// It is not tried where the folder cannot be written, nor again for a journal that a first try
    /// has left as it was. It fails, with nothing changed, where the file or its journal cannot be
    /// written, or where the journal names a super-journal, which only the program that wrote it
    /// can judge.
    ///
    /// @param busyTimeoutMs  how long to wait for other processes that read the file or roll it
    ///                       back.
    /// @return whether another process has kept its lock for all that time.
    bool rollBack(sqlite3* db, int busyTimeoutMs) noexcept;

private:
    bool isWorthATry(const char* database, const struct stat& status) const noexcept;

    struct stat m_triedJournal = {};  ///< which a try has not removed
};
