#include "LockedFile.h"

#include <sqlite3.h>

#include <algorithm>
#include <filesystem>

#include "database/DatabaseErrors.h"
#include "database/Journals.h"
#include "text/formatted.h"

LockedFile::LockedFile(const std::string& file, Lock lock, const Patience& patience) : m_name(file)
{
    try {
        open(lock == Lock::AGAINST_CHANGES ? SQLITE_OPEN_READONLY : SQLITE_OPEN_READWRITE);
        acquire(lock, patience);
    } catch (...) {
        sqlite3_close(m_db);
        throw;
    }
}

LockedFile::~LockedFile()
{
    sqlite3_close(m_db);
}

void LockedFile::open(int flags)
{
    // An absolute path is never taken as a URI, nor as a database in memory.
    const std::string path = std::filesystem::absolute(m_name).string();
    if (sqlite3_open_v2(path.c_str(), &m_db, flags | SQLITE_OPEN_NOMUTEX, nullptr) != SQLITE_OK) {
        throw RefusedReplacement(
            formatted("{}: cannot be opened: {}", m_name, sqlite3_errmsg(m_db)));
    }
    if (flags == SQLITE_OPEN_READWRITE && sqlite3_db_readonly(m_db, "main") != 0) {
        throw RefusedReplacement(formatted("{}: may not be written to", m_name));
    }
    check(
        sqlite3_file_control(m_db, "main", SQLITE_FCNTL_FILE_POINTER, static_cast<void*>(&m_file)));
}

void LockedFile::acquire(Lock lock, const Patience& patience)
{
    for (int code = tryLevelsUpTo(lock); code != SQLITE_OK; code = tryLevelsUpTo(lock)) {
        m_file->pMethods->xUnlock(m_file, SQLITE_LOCK_NONE);
        if (code != SQLITE_BUSY) {
            check(code);
        }
        if (!patience.wait()) {
            throw RefusedReplacement(m_name + ": is in use; a writer is at work");
        }
    }
}

/// SQLite's locks are taken one after the other.
int LockedFile::tryLevelsUpTo(Lock lock)
{
    int code = m_file->pMethods->xLock(m_file, SQLITE_LOCK_SHARED);
    if (code == SQLITE_OK && lock >= Lock::AGAINST_WRITERS) {
        code = m_file->pMethods->xLock(m_file, SQLITE_LOCK_RESERVED);
    }
    if (code == SQLITE_OK && lock == Lock::AGAINST_ALL) {
        code = m_file->pMethods->xLock(m_file, SQLITE_LOCK_EXCLUSIVE);
    }
    return code;
}

std::uint64_t LockedFile::size() const
{
    sqlite3_int64 size = 0;
    check(m_file->pMethods->xFileSize(m_file, &size));
    return static_cast<std::uint64_t>(size);
}

std::string LockedFile::read(std::uint64_t offset, std::uint64_t count) const
{
    const std::uint64_t end = std::min(size(), offset + count);
    std::string bytes(static_cast<std::size_t>(end > offset ? end - offset : 0), '\0');
    if (!bytes.empty()) {
        check(m_file->pMethods->xRead(m_file, bytes.data(), static_cast<int>(bytes.size()),
                                      static_cast<sqlite3_int64>(offset)));
    }
    return bytes;
}

bool LockedFile::isInWalMode() const
{
    return saysWalMode(read(0, SQLITE_HEADER_SIZE));
}

void LockedFile::check(int code) const
{
    if (code != SQLITE_OK) {
        throw RefusedReplacement(formatted("{}: {}", m_name, sqlite3_errstr(code)));
    }
}
