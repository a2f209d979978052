#include "HotJournal.h"

#include <fcntl.h>
#include <sqlite3.h>
#include <unistd.h>

#include <memory>
#include <string_view>

#include "../execute.h"
#include "CompanionVfs.h"
#include "SqliteMemory.h"

namespace {

SqliteText folderOf(const char* absolutePath)
{
    const std::size_t length = std::string_view(absolutePath).rfind('/') + 1;
    return SqliteText(sqlite3_mprintf("%.*s", static_cast<int>(length), absolutePath));
}

bool isWritable(const char* path)
{
    return faccessat(AT_FDCWD, path, W_OK, AT_EACCESS) == 0;
}

/// @return whether the folder lets its files be removed only by their owner, who is somebody else.
bool isKeptBySomebodyElse(const char* folder, const struct stat& file)
{
    struct stat status;
    const uid_t user = geteuid();
    return stat(folder, &status) == 0 && (status.st_mode & S_ISVTX) != 0 && user != 0 &&
           user != status.st_uid && user != file.st_uid;
}

bool isSame(const struct stat& one, const struct stat& other)
{
    return one.st_ino == other.st_ino && one.st_mtim.tv_sec == other.st_mtim.tv_sec &&
           one.st_mtim.tv_nsec == other.st_mtim.tv_nsec;
}

/// SQLite rolls back before it reads: this smallest read there is, of the file's first page.
int readHeader(sqlite3* db)
{
    return execute(db, "PRAGMA schema_version");
}

int rollBackFile(const char* database, int busyTimeoutMs)
{
    CompanionVfs vfs(CompanionVfs::Use::ROLLING_BACK);
    sqlite3* opened = nullptr;
    const int code = vfs.open(database, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, &opened);
    const std::unique_ptr<sqlite3, decltype(&sqlite3_close)> writer(opened, sqlite3_close);
    if (code != SQLITE_OK) {
        return code;
    }
    // A log that lies there as well is not for us to put into the file.
    sqlite3_db_config(writer.get(), SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
    sqlite3_busy_timeout(writer.get(), busyTimeoutMs);
    return readHeader(writer.get());
}

}  // namespace

bool HotJournal::blocks(sqlite3* db) noexcept
{
    return sqlite3_extended_errcode(db) == SQLITE_READONLY_ROLLBACK;
}

bool HotJournal::rollBack(sqlite3* db, int busyTimeoutMs) noexcept
{
    const char* const database = sqlite3_db_filename(db, "main");
    const char* const journal = sqlite3_filename_journal(database);
    struct stat status;
    if (lstat(journal, &status) != 0 || !isWorthATry(database, status)) {
        return false;
    }
    const int code = rollBackFile(database, busyTimeoutMs);
    const bool isLocked = code == SQLITE_BUSY;
    if (code != SQLITE_OK && !isLocked) {
        m_triedJournal = status;
    }
    return isLocked;
}

bool HotJournal::isWorthATry(const char* database, const struct stat& status) const noexcept
{
    if (!S_ISREG(status.st_mode) || isSame(status, m_triedJournal)) {
        return false;
    }
    const SqliteText folder = folderOf(database);
    return folder != nullptr && isWritable(folder.get()) &&
           !isKeptBySomebodyElse(folder.get(), status);
}
