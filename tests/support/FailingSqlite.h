#pragma once

/// Makes one operation of SQLite fail in turn: the first, the second, ... One of each at a time.

/// While it lives, SQLite's allocations can be made to fail. To be made while no database is open.
class FailingSqliteMemory {
public:
    FailingSqliteMemory();
    ~FailingSqliteMemory();
    FailingSqliteMemory(const FailingSqliteMemory&) = delete;
    FailingSqliteMemory& operator=(const FailingSqliteMemory&) = delete;

    /// @param which  1 for the next allocation, 2 for the one after it, ...; 0 for none.
    static void failAt(long which);

    /// @return whether so many allocations were made that the one failed.
    static bool hasFailed();
};

/// While it lives, reads of files that SQLite opens can be made to fail. To be made before the
/// database is opened, and to go after it is closed.
class FailingSqliteReads {
public:
    FailingSqliteReads();
    ~FailingSqliteReads();
    FailingSqliteReads(const FailingSqliteReads&) = delete;
    FailingSqliteReads& operator=(const FailingSqliteReads&) = delete;

    /// @param which  1 for the next read, 2 for the one after it, ...; 0 for none.
    static void failAt(long which);

    /// @return whether so many reads were made that the one failed.
    static bool hasFailed();
};
