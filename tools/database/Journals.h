#pragma once

#include <cstddef>
#include <string>
#include <string_view>

constexpr const char* JOURNAL_SUFFIX = "-journal";
constexpr const char* WAL_SUFFIX = "-wal";
constexpr const char* WAL_INDEX_SUFFIX = "-shm";

/// Of the names of all files that SQLite keeps beside a database.
constexpr const char* FILE_SUFFIXES[] = {JOURNAL_SUFFIX, WAL_SUFFIX, WAL_INDEX_SUFFIX};

/// How a database file is journalled, and the names of the journals that lie beside it; empty:
/// there is none.
struct Journals {
    bool isWalMode = false;
    std::string rollbackJournal;
    std::string wal;
};

/// Looks without opening the database, which may roll a journal back or remove it, or make one.
Journals journalsOf(const std::string& file);

/// Of SQLite's file format.
constexpr std::size_t SQLITE_HEADER_SIZE = 100;

/// @return so many first bytes of a file; zeros for what is not there.
std::string headerOf(const std::string& file);

/// @param header  the first bytes of a file.
/// @return whether they say that the file is in WAL mode.
bool saysWalMode(std::string_view header);
