#pragma once

#include <chrono>

struct sqlite3;

/// Ends the query that runs while it lives, with SQLite's "interrupted", once the query has taken
/// far more than reading a database of fault definitions can: a view in place of a table may never
/// end.
class QueryBudget {
public:
    explicit QueryBudget(sqlite3* db);
    ~QueryBudget();
    QueryBudget(const QueryBudget&) = delete;
    QueryBudget& operator=(const QueryBudget&) = delete;

private:
    static int isSpent(void* budget);
    void start();

    sqlite3* m_db;
    bool m_started = false;
    std::chrono::nanoseconds m_lastProcessorTime{};
    long long m_mostMemory = 0;
};
