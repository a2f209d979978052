#include "CompanionVfs.h"

#include <sys/stat.h>

#include <algorithm>
#include <cstring>

#include "SqliteMemory.h"

namespace {

/// How a journal that names a super-journal ends: the name's length, its checksum and these eight
/// bytes, with which a journal begins as well. From SQLite's file format, "The Rollback Journal".
constexpr int END_SIZE = 4 + 4 + 8;
constexpr unsigned char MAGIC[] = {0xd9, 0xd5, 0x05, 0xf9, 0x20, 0xa1, 0x63, 0xd7};

sqlite3_vfs* targetOf(sqlite3_vfs* vfs)
{
    return static_cast<sqlite3_vfs*>(vfs->pAppData);
}

/// Passes an operation of a VFS on to the one that its application data is.
template <auto OPERATION>
struct PassOn;

template <class Result, class... Arguments,
          Result (*sqlite3_vfs::*OPERATION)(sqlite3_vfs*, Arguments...)>
struct PassOn<OPERATION> {
    static Result call(sqlite3_vfs* vfs, Arguments... arguments) noexcept
    {
        return (targetOf(vfs)->*OPERATION)(targetOf(vfs), arguments...);
    }
};

SqliteText shmOf(const char* database)
{
    return SqliteText(sqlite3_mprintf("%s-shm", database));
}

/// In the order of their danger.
enum class Companion { HARMLESS, SECOND_LINK, NO_REGULAR_FILE };

/// What has a name is looked at, not what it may be a symbolic link to.
Companion companionAt(const char* path)
{
    struct stat status;
    if (lstat(path, &status) != 0) {
        return Companion::HARMLESS;
    }
    if (!S_ISREG(status.st_mode)) {
        return Companion::NO_REGULAR_FILE;
    }
    return status.st_nlink > 1 ? Companion::SECOND_LINK : Companion::HARMLESS;
}

/// The checksum is not looked at: half a name is reason enough to leave the file alone.
bool namesSuperJournal(sqlite3_file* journal)
{
    unsigned char end[END_SIZE] = {};
    sqlite3_int64 size = 0;
    return journal->pMethods->xFileSize(journal, &size) == SQLITE_OK && size >= END_SIZE &&
           journal->pMethods->xRead(journal, end, END_SIZE, size - END_SIZE) == SQLITE_OK &&
           std::memcmp(end + 8, MAGIC, sizeof MAGIC) == 0 &&
           (end[0] | end[1] | end[2] | end[3]) != 0;
}

/// @param code  what it is not opened for.
int refuse(sqlite3_file* file, int code)
{
    file->pMethods = nullptr;  // or SQLite would close it
    return code;
}

}  // namespace

CompanionVfs::CompanionVfs(Use use) noexcept : sqlite3_vfs(), m_use(use) {}

CompanionVfs::~CompanionVfs()
{
    sqlite3_free_filename(const_cast<char*>(m_nameNotToWriteShm));  // a char* before 3.40
}

// Registered only while SQLite looks for it, so that an application never finds it.
int CompanionVfs::open(const char* path, int flags, sqlite3** db) noexcept
{
    sqlite3_vfs* const target = sqlite3_vfs_find(nullptr);
    if (target == nullptr) {
        return SQLITE_NOMEM;
    }
    passOnTo(target);
    sqlite3_vfs_register(this, 0);
    const int code = sqlite3_open_v2(path, db, flags, m_name);
    sqlite3_vfs_unregister(this);
    return code;
}

// No extension is loaded through it, and SQLite takes its random numbers from the default one.
void CompanionVfs::passOnTo(sqlite3_vfs* target) noexcept
{
    // A name of its own, so that several threads can open a connection each.
    sqlite3_snprintf(sizeof m_name, m_name, "zav%p", this);
    iVersion = std::min(target->iVersion, 2);
    szOsFile = target->szOsFile;
    mxPathname = target->mxPathname;
    zName = m_name;
    pAppData = target;
    xOpen = openFile;
    xDelete = deleteFile;
    xAccess = PassOn<&sqlite3_vfs::xAccess>::call;
    xFullPathname = PassOn<&sqlite3_vfs::xFullPathname>::call;
    xSleep = PassOn<&sqlite3_vfs::xSleep>::call;
    xCurrentTime = PassOn<&sqlite3_vfs::xCurrentTime>::call;
    xCurrentTimeInt64 = PassOn<&sqlite3_vfs::xCurrentTimeInt64>::call;
}

CompanionVfs* CompanionVfs::of(sqlite3* db) noexcept
{
    sqlite3_vfs* vfs = nullptr;
    if (db != nullptr) {
        sqlite3_file_control(db, "main", SQLITE_FCNTL_VFS_POINTER, static_cast<void*>(&vfs));
    }
    const bool isOne = vfs != nullptr && vfs->xOpen == openFile;
    return isOne ? static_cast<CompanionVfs*>(vfs) : nullptr;
}

int CompanionVfs::openFile(sqlite3_vfs* vfs, const char* name, sqlite3_file* file, int flags,
                           int* flagsUsed) noexcept
{
    CompanionVfs& self = *static_cast<CompanionVfs*>(vfs);
    if ((flags & SQLITE_OPEN_MAIN_DB) != 0) {
        name = self.takeDatabase(name);
        if (name == nullptr) {
            return refuse(file, SQLITE_NOMEM);
        }
    }
    if (!self.mayOpen(name, flags)) {
        return refuse(file, SQLITE_CANTOPEN);
    }
    const int code = targetOf(vfs)->xOpen(targetOf(vfs), name, file, flags, flagsUsed);
    if (code == SQLITE_OK && self.m_use == Use::ROLLING_BACK &&
        (flags & SQLITE_OPEN_MAIN_JOURNAL) != 0) {
        if (namesSuperJournal(file)) {
            file->pMethods->xClose(file);
            return refuse(file, SQLITE_READONLY);
        }
        self.m_journal = name;
    }
    return code;
}

int CompanionVfs::deleteFile(sqlite3_vfs* vfs, const char* name, int syncFolder) noexcept
{
    const CompanionVfs& self = *static_cast<CompanionVfs*>(vfs);
    return name == self.m_journal ? targetOf(vfs)->xDelete(targetOf(vfs), name, syncFolder)
                                  : SQLITE_OK;  // whoever it belongs to deletes it
}

/// @return the name to open it by; null without memory.
const char* CompanionVfs::takeDatabase(const char* name) noexcept
{
    m_database = name;
    const SqliteText shm = shmOf(name);
    if (shm == nullptr) {
        return nullptr;
    }
    if (companionAt(shm.get()) != Companion::SECOND_LINK) {
        return name;
    }
    const char* parameters[] = {"readonly_shm", "1"};
    m_nameNotToWriteShm = sqlite3_create_filename(name, "", "", 1, parameters);
    return m_nameNotToWriteShm;
}

bool CompanionVfs::mayOpen(const char* name, int flags) const noexcept
{
    const bool isLog = (flags & SQLITE_OPEN_WAL) != 0;
    if (!isLog && (flags & SQLITE_OPEN_MAIN_JOURNAL) == 0) {
        return (flags & SQLITE_OPEN_SUPER_JOURNAL) == 0;
    }
    if (companionAt(name) == Companion::NO_REGULAR_FILE) {
        return false;
    }
    if (!isLog) {
        return true;
    }
    // SQLite opens the "-shm" right after the log, and not through its VFS.
    const SqliteText shm = shmOf(m_database);
    const Companion worst =
        m_nameNotToWriteShm == nullptr ? Companion::HARMLESS : Companion::SECOND_LINK;
    return shm != nullptr && companionAt(shm.get()) <= worst;
}
