#pragma once

#include <sqlite3.h>

/// SQLite's default VFS, for one connection, but careful with the files beside the database: SQLite
/// by itself opens, overwrites and deletes whatever has the right name there.
///
/// A journal, a write-ahead log or its "-shm" that is no regular file is not opened (SQLite would
/// wait for a FIFO without end), a "-shm" with a second link is not written, since that may be
/// somebody's file, and nothing is deleted but a journal that was rolled back (see Use).
class CompanionVfs : sqlite3_vfs {
public:
    enum class Use {
        READING,       ///< deletes nothing
        ROLLING_BACK,  ///< deletes the journal that it rolls back, which names no super-journal
    };

    explicit CompanionVfs(Use use) noexcept;
    ~CompanionVfs();
    CompanionVfs(const CompanionVfs&) = delete;
    CompanionVfs& operator=(const CompanionVfs&) = delete;

    /// Opens a database through this VFS, which has to outlive the connection.
    ///
    /// @param[out] db  to be closed in any case; may be null.
    /// @return SQLite's result code.
    int open(const char* path, int flags, sqlite3** db) noexcept;

    /// @return the VFS that a connection was opened through; null when it was none of these.
    static CompanionVfs* of(sqlite3* db) noexcept;

private:
    // SQLite calls them: no exception may pass through its code.
    static int openFile(sqlite3_vfs* vfs, const char* name, sqlite3_file* file, int flags,
                        int* flagsUsed) noexcept;
    static int deleteFile(sqlite3_vfs* vfs, const char* name, int syncFolder) noexcept;

    void passOnTo(sqlite3_vfs* target) noexcept;
    const char* takeDatabase(const char* name) noexcept;
    bool mayOpen(const char* name, int flags) const noexcept;

    char m_name[sizeof "zav0x" + 2 * sizeof(void*)] = "";
    const Use m_use;
    const char* m_journal = nullptr;  ///< the one to roll back, by SQLite's own pointer to its name
    const char* m_database = nullptr;           ///< resolved; SQLite's own
    const char* m_nameNotToWriteShm = nullptr;  ///< of the database
};
