#pragma once

#include <string>

/// How a database file is journalled, and the names of the journals that lie beside it; empty:
/// there is none.
struct Journals {
    bool isWalMode = false;
    std::string rollbackJournal;
    std::string wal;
};

/// Looks without opening the database, which may roll a journal back or remove it, or make one.
Journals journalsOf(const std::string& file);
