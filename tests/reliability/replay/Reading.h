#pragma once

#include <string>

/// What a reader has found in a database.
struct Reading {
    bool hasSucceeded;
    std::string text;  ///< all records, by all four queries; of a failure, the reason
};

inline bool operator==(const Reading& left, const Reading& right)
{
    return left.hasSucceeded == right.hasSucceeded && left.text == right.text;
}

/// Reads through DescriptionDb.
Reading readThroughService(const std::string& file);

/// Reads through SQLite alone, which may write: it rolls back what has to be.
Reading readThroughSqlite(const std::string& file);

/// Reads the file as it stands, past its journal or log: what no reader must do.
Reading readPastJournal(const std::string& file);

/// @return whether SQLite finds nothing wrong in a database file, its indexes included.
bool isSound(const std::string& file);
