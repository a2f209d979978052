#pragma once

#include <set>
#include <string>

#include "support/ChildProcess.h"
#include "zav/Sqlite3Db.h"

/// A database whose texts all say in which update they were written, and the processes that update
/// it: whoever reads must find one generation whole.

/// Makes the database, with generation 0 committed.
/// @param journalMode  "DELETE" or "WAL".
/// @return the file's path, as passed.
std::string makeGenerations(const std::string& file, const std::string& journalMode);

/// Begins the update to generation 1 with so small a page cache that changed pages go to the disk
/// before the commit; signals, and waits to be killed.
void updateWithoutCommit(const std::string& file, const ChildProcess::Signal& signal);

/// A process that is killed in updateWithoutCommit().
/// @return whether it came so far.
bool killWriter(const std::string& file);

/// Updates from generation to generation without end; signals after each commit.
void updateForever(const std::string& file, const ChildProcess::Signal& signal);

struct Generations {
    int result;                   ///< of Sqlite3Db::getTbl()
    std::set<std::string> texts;  ///< those found
};

/// Reads all descriptions.
Generations readGenerations(Sqlite3Db& db);
