#pragma once

#include <sqlite3.h>

#include <string>

/// SQLite's default VFS, for one connection, with an eye on what lies beside the database: SQLite
/// by itself opens, overwrites and deletes whatever bears the right name there.
///
/// A journal, a write-ahead log or its "-shm" that is no regular file is not opened (SQLite would
/// wait for a FIFO without end), nor is a log whose "-shm" is a second link to somebody's file.
/// And nothing is deleted but what the connection is for.
class CompanionVfs {
public:
    enum class Use {
        READING,       ///< deletes nothing
        ROLLING_BACK,  ///< deletes the database's own journal, unless the database is empty
    };

    explicit CompanionVfs(Use use) : m_use(use) {}
    CompanionVfs(const CompanionVfs&) = delete;
    CompanionVfs& operator=(const CompanionVfs&) = delete;

    /// Opens a database through this VFS, which has to outlive the connection.
    ///
    /// @param[out] db  to be closed in any case; may be null.
    /// @return SQLite's result code.
    int open(const std::string& path, int flags, sqlite3** db);

    /// Opens the same database so that a "-shm" is never written, whoever has linked to it.
    int reopenWithoutWritingShm(int flags, sqlite3** db);

    bool shmHasSecondLink() const;

    /// @return the VFS that a connection was opened through; null when it was none of these.
    static CompanionVfs* of(sqlite3* db);

    sqlite3_vfs* defaultVfs() const { return m_default; }

private:
    static int openFile(sqlite3_vfs* vfs, const char* name, sqlite3_file* file, int flags,
                        int* flagsUsed);
    static int deleteFile(sqlite3_vfs* vfs, const char* name, int syncFolder);
    void passOnToDefault();
    int openAs(const std::string& name, int flags, sqlite3** db);
    bool mayOpen(const char* name, int flags) const;
    bool mayDelete(const char* name) const;

    sqlite3_vfs* m_default = nullptr;
    sqlite3_vfs m_vfs = {};
    std::string m_name;
    const Use m_use;
    bool m_writesShm = true;
    // Made before SQLite asks: no exception may pass through its code.
    std::string m_database;  ///< resolved
    std::string m_journal;
    std::string m_shm;
};
