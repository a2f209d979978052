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
    bool takesTooMuchMemory() const;
    bool takesTooLong() const;

    sqlite3* m_db;
    bool m_started = false;
    long long m_memoryAtStart = 0;
    std::chrono::nanoseconds m_processorTimeAtStart{};
    std::chrono::steady_clock::time_point m_start;
};
