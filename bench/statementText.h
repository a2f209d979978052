#pragma once

#include <string>

/// One way of writing the `INSERT` text of a description.
struct StatementKind {
    const char* name;
    std::string (*write)();
};

std::string writeByTable();
std::string writeByPrintf();

/// SQLite's own formatter is the peer.
constexpr StatementKind STATEMENTS[] = {{"zav", writeByTable}, {"sqlite3_mprintf", writeByPrintf}};
