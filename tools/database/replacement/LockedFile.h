#pragma once

#include <cstdint>
#include <string>

#include "Patience.h"

struct sqlite3;
struct sqlite3_file;

/// A file under one of SQLite's locks, whatever the file holds: a database, a damaged one, nothing.
class LockedFile {
public:
    enum class Lock {
        AGAINST_CHANGES,  ///< nobody commits to the file
        AGAINST_WRITERS,  ///< nobody begins to write; others may read
        AGAINST_ALL,
    };

    /// Waits for those whose locks are in the way.
    ///
    /// @throws RefusedReplacement
    LockedFile(const std::string& file, Lock lock, const Patience& patience);
    ~LockedFile();
    LockedFile(const LockedFile&) = delete;
    LockedFile& operator=(const LockedFile&) = delete;

    /// @throws RefusedReplacement
    std::uint64_t size() const;

    /// @return so many bytes, or those that there are.
    /// @throws RefusedReplacement
    std::string read(std::uint64_t offset, std::uint64_t count) const;

    /// @return whether the file says that it is in WAL mode.
    /// @throws RefusedReplacement
    bool isInWalMode() const;

private:
    void open(int flags);
    void acquire(Lock lock, const Patience& patience);
    int tryLevelsUpTo(Lock lock);
    void check(int code) const;

    std::string m_name;
    sqlite3* m_db = nullptr;         ///< for its file alone: no statement is ever run
    sqlite3_file* m_file = nullptr;  ///< owned by it
};
