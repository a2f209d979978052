#pragma once

#include <string>
#include <vector>

#include "Recording.h"

/// How a writer is set up.
struct Writer {
    std::string journalMode;
    std::string synchronous;
    int pageSize;
    std::string autoVacuum;

    std::string name() const;

    /// Makes a database of fault definitions and changes all its rows, in transactions so large
    /// that their pages go to the disk before the commit, and small ones; one is given up. The file
    /// grows and shrinks.
    Recording record() const;
};

/// @return one for each journal mode and kind of file.
/// @param synchronous  "FULL", SQLite's default; "OFF" for one that never waits for the disk.
std::vector<Writer> allWriters(const std::string& synchronous);
