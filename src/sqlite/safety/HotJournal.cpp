#include "HotJournal.h"

#include <fcntl.h>
#include <sqlite3.h>
#include <unistd.h>

#include <cstddef>
#include <cstring>
#include <memory>

#include "CompanionVfs.h"

namespace {

/// How a journal that names a super-journal ends: the name's length, its checksum and these eight
/// bytes, with which a journal begins as well. From SQLite's file format, "The Rollback Journal".
constexpr std::size_t END_SIZE = 4 + 4 + 8;
constexpr unsigned char MAGIC[] = {0xd9, 0xd5, 0x05, 0xf9, 0x20, 0xa1, 0x63, 0xd7};

class ReadOnlyFile {
public:
    /// Waits for nothing, whatever has the name.
    explicit ReadOnlyFile(const std::string& path)
        : m_descriptor(open(path.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC))
    {
    }
    ~ReadOnlyFile()
    {
        if (m_descriptor >= 0) {
            close(m_descriptor);
        }
    }
    ReadOnlyFile(const ReadOnlyFile&) = delete;
    ReadOnlyFile& operator=(const ReadOnlyFile&) = delete;

    bool readLast(void* bytes, std::size_t size) const
    {
        struct stat status = {};
        return fstat(m_descriptor, &status) == 0 && S_ISREG(status.st_mode) &&
               status.st_size >= static_cast<off_t>(size) &&
               pread(m_descriptor, bytes, size, status.st_size - static_cast<off_t>(size)) ==
                   static_cast<ssize_t>(size);
    }

private:
    int m_descriptor;
};

/// The checksum is not looked at: half a name is reason enough to leave the file alone.
bool namesSuperJournal(const std::string& journal)
{
    unsigned char end[END_SIZE] = {};
    const bool hasName = ReadOnlyFile(journal).readLast(end, sizeof end) &&
                         std::memcmp(end + 8, MAGIC, sizeof MAGIC) == 0;
    return hasName && (end[0] | end[1] | end[2] | end[3]) != 0;
}

std::string folderOf(const std::string& absolutePath)
{
    return absolutePath.substr(0, absolutePath.rfind('/') + 1);
}

bool isWritable(const std::string& path)
{
    return faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) == 0;
}

/// @return whether the folder lets its files be removed only by their owner, who is somebody else.
bool isKeptBySomebodyElse(const std::string& folder, const struct stat& file)
{
    struct stat status = {};
    const uid_t user = geteuid();
    return stat(folder.c_str(), &status) == 0 && (status.st_mode & S_ISVTX) != 0 && user != 0 &&
           user != status.st_uid && user != file.st_uid;
}

bool isSame(const struct stat& one, const struct stat& other)
{
    return one.st_dev == other.st_dev && one.st_ino == other.st_ino &&
           one.st_size == other.st_size && one.st_mtim.tv_sec == other.st_mtim.tv_sec &&
           one.st_mtim.tv_nsec == other.st_mtim.tv_nsec;
}

/// SQLite rolls back before it reads: this smallest read there is, of the file's first page.
int readHeader(sqlite3* db)
{
    return sqlite3_exec(db, "PRAGMA schema_version", nullptr, nullptr, nullptr);
}

int rollBackFile(const std::string& database, int busyTimeoutMs)
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

bool HotJournal::blocks(sqlite3* db)
{
    return sqlite3_extended_errcode(db) == SQLITE_READONLY_ROLLBACK;
}

bool HotJournal::rollBack(sqlite3* db, int busyTimeoutMs)
{
    const std::string database = sqlite3_db_filename(db, "main");
    const std::string journal = database + "-journal";
    struct stat status = {};
    if (lstat(journal.c_str(), &status) != 0 || !isWorthATry(database, journal, status)) {
        return false;
    }
    const int code = rollBackFile(database, busyTimeoutMs);
    const bool isLocked = code == SQLITE_BUSY;
    if (code != SQLITE_OK && !isLocked) {
        m_stayed = status;
    }
    return isLocked;
}

bool HotJournal::isWorthATry(const std::string& database, const std::string& journal,
                             const struct stat& status) const
{
    const std::string folder = folderOf(database);
    return S_ISREG(status.st_mode) && !isSame(status, m_stayed) && isWritable(database) &&
           isWritable(journal) && isWritable(folder) && !isKeptBySomebodyElse(folder, status) &&
           !namesSuperJournal(journal);
}
