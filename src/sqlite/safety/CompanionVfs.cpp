#include "CompanionVfs.h"

#include <sys/stat.h>

#include <algorithm>
#include <cstdint>

namespace {

CompanionVfs* companionOf(sqlite3_vfs* vfs)
{
    return static_cast<CompanionVfs*>(vfs->pAppData);
}

/// Passes an operation of a VFS on to the one that its application data names.
template <auto OPERATION>
struct PassOn;

template <class Result, class... Arguments,
          Result (*sqlite3_vfs::*OPERATION)(sqlite3_vfs*, Arguments...)>
struct PassOn<OPERATION> {
    static Result call(sqlite3_vfs* vfs, Arguments... arguments)
    {
        sqlite3_vfs* const target = companionOf(vfs)->defaultVfs();
        return (target->*OPERATION)(target, arguments...);
    }
};

bool isEmpty(const std::string& path)
{
    struct stat status = {};
    return stat(path.c_str(), &status) == 0 && status.st_size == 0;
}

/// @return whether nothing has the name, or a regular file that lstat() finds to be one.
bool isRegularOrMissing(const char* path)
{
    struct stat status = {};
    return lstat(path, &status) != 0 || S_ISREG(status.st_mode);
}

/// A path as a URI in which nothing is taken for a parameter.
std::string uriOf(const std::string& absolutePath)
{
    std::string uri = "file://";
    for (const char letter : absolutePath) {
        switch (letter) {
        case '%':
            uri += "%25";
            break;
        case '?':
            uri += "%3f";
            break;
        case '#':
            uri += "%23";
            break;
        default:
            uri += letter;
        }
    }
    return uri;
}

}  // namespace

int CompanionVfs::open(const std::string& path, int flags, sqlite3** db)
{
    m_default = sqlite3_vfs_find(nullptr);
    if (m_default == nullptr) {
        return SQLITE_NOMEM;
    }
    passOnToDefault();
    const int code = openAs(path, flags, db);
    const char* const database = code == SQLITE_OK ? sqlite3_db_filename(*db, "main") : nullptr;
    if (database != nullptr && *database != '\0') {
        m_database = database;
        m_journal = m_database + "-journal";
        m_shm = m_database + "-shm";
    }
    return code;
}

int CompanionVfs::reopenWithoutWritingShm(int flags, sqlite3** db)
{
    m_writesShm = false;
    return openAs(uriOf(m_database) + "?readonly_shm=1", flags | SQLITE_OPEN_URI, db);
}

// Registered only while SQLite looks for it: nothing is left behind for an application to meet.
int CompanionVfs::openAs(const std::string& name, int flags, sqlite3** db)
{
    sqlite3_vfs_register(&m_vfs, 0);
    const int code = sqlite3_open_v2(name.c_str(), db, flags, m_vfs.zName);
    sqlite3_vfs_unregister(&m_vfs);
    return code;
}

void CompanionVfs::passOnToDefault()
{
    // A name of its own, so that several threads can open a connection each.
    m_name = "zav" + std::to_string(reinterpret_cast<std::uintptr_t>(this));
    m_vfs.iVersion = std::min(m_default->iVersion, 2);
    m_vfs.szOsFile = m_default->szOsFile;
    m_vfs.mxPathname = m_default->mxPathname;
    m_vfs.zName = m_name.c_str();
    m_vfs.pAppData = this;
    m_vfs.xOpen = openFile;
    m_vfs.xDelete = deleteFile;
    m_vfs.xAccess = PassOn<&sqlite3_vfs::xAccess>::call;
    m_vfs.xFullPathname = PassOn<&sqlite3_vfs::xFullPathname>::call;
    m_vfs.xDlOpen = PassOn<&sqlite3_vfs::xDlOpen>::call;
    m_vfs.xDlError = PassOn<&sqlite3_vfs::xDlError>::call;
    m_vfs.xDlSym = PassOn<&sqlite3_vfs::xDlSym>::call;
    m_vfs.xDlClose = PassOn<&sqlite3_vfs::xDlClose>::call;
    m_vfs.xRandomness = PassOn<&sqlite3_vfs::xRandomness>::call;
    m_vfs.xSleep = PassOn<&sqlite3_vfs::xSleep>::call;
    m_vfs.xCurrentTime = PassOn<&sqlite3_vfs::xCurrentTime>::call;
    m_vfs.xGetLastError = PassOn<&sqlite3_vfs::xGetLastError>::call;
    m_vfs.xCurrentTimeInt64 = PassOn<&sqlite3_vfs::xCurrentTimeInt64>::call;
}

CompanionVfs* CompanionVfs::of(sqlite3* db)
{
    sqlite3_vfs* vfs = nullptr;
    if (db != nullptr) {
        sqlite3_file_control(db, "main", SQLITE_FCNTL_VFS_POINTER, static_cast<void*>(&vfs));
    }
    const bool isOne = vfs != nullptr && vfs->xOpen == openFile;
    return isOne ? companionOf(vfs) : nullptr;
}

bool CompanionVfs::shmHasSecondLink() const
{
    struct stat status = {};
    return lstat(m_shm.c_str(), &status) == 0 && status.st_nlink > 1;
}

int CompanionVfs::openFile(sqlite3_vfs* vfs, const char* name, sqlite3_file* file, int flags,
                           int* flagsUsed)
{
    const CompanionVfs& self = *companionOf(vfs);
    if (!self.mayOpen(name, flags)) {
        file->pMethods = nullptr;  // or SQLite would close it
        return SQLITE_CANTOPEN;
    }
    return self.m_default->xOpen(self.m_default, name, file, flags, flagsUsed);
}

int CompanionVfs::deleteFile(sqlite3_vfs* vfs, const char* name, int syncFolder)
{
    const CompanionVfs& self = *companionOf(vfs);
    return self.mayDelete(name) ? self.m_default->xDelete(self.m_default, name, syncFolder)
                                : SQLITE_OK;  // whoever it belongs to deletes it
}

bool CompanionVfs::mayOpen(const char* name, int flags) const
{
    if ((flags & SQLITE_OPEN_SUPER_JOURNAL) != 0) {
        return false;
    }
    if ((flags & SQLITE_OPEN_WAL) != 0) {
        // SQLite opens the "-shm" right after the log, and not through its VFS.
        return isRegularOrMissing(name) && isRegularOrMissing(m_shm.c_str()) &&
               (!m_writesShm || !shmHasSecondLink());
    }
    return (flags & SQLITE_OPEN_MAIN_JOURNAL) == 0 || isRegularOrMissing(name);
}

bool CompanionVfs::mayDelete(const char* name) const
{
    return m_use == Use::ROLLING_BACK && m_journal == name && !isEmpty(m_database);
}
