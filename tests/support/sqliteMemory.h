#pragma once

/// While it lives, SQLite gets no memory: each of its allocations fails.
class NoSqliteMemory {
public:
    NoSqliteMemory();
    ~NoSqliteMemory();
    NoSqliteMemory(const NoSqliteMemory&) = delete;
    NoSqliteMemory& operator=(const NoSqliteMemory&) = delete;
};

/// What the last sqlite3_get_table() of this process handed out, for a test to release what its
/// caller left.
struct TableMemory {
    char** result = nullptr;  ///< null again once it is released
    char* errorText = nullptr;
    int calls = 0;  ///< of sqlite3_get_table() so far
};
const TableMemory& lastTableMemory();
