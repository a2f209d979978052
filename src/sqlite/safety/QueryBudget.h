#pragma once

struct sqlite3;

/// Ends whatever SQLite runs on a connection while it lives, with SQLite's "interrupted", once that
/// has taken far more than reading a database of fault definitions can: a view in place of a table
/// may never end.
///
/// SQLite tells how much memory it has, not for whom. As long as that is little, nobody cares. When
/// it is much, the query is ended and can be run again with its own result counted alone.
class QueryBudget {
public:
    explicit QueryBudget(sqlite3* db);
    ~QueryBudget();
    QueryBudget(const QueryBudget&) = delete;
    QueryBudget& operator=(const QueryBudget&) = delete;

    /// Looks at the budget so often that no row of a file's own code is past it unseen.
    void lookOften();

    /// @return whether the memory has ended a query that may have taken only a part of it.
    bool wasEndedForMemoryOfAll() const { return m_wasEndedForMemory && !m_countsResult; }

    /// Counts the result of the next run.
    ///
    /// @param withFileCode  what SQLite needs besides, to sort a view for instance, counts as well,
    ///                      and so does what others take meanwhile.
    void countResult(bool withFileCode);

private:
    static int isSpent(void* budget);
    static int addRow(unsigned event, void* budget, void* statement, void* unused);
    void lookEvery(int steps);
    bool takesTooMuchMemory();
    bool takesTooLong();

    sqlite3* m_db;
    long long m_memoryAtStart;
    bool m_wasEndedForMemory = false;
    bool m_countsResult = false;
    bool m_countsAll = true;
    long long m_resultSize = 0;
    int m_start = -1;  ///< of the clock, in seconds; -1: not yet looked at
    int m_processorTimeAtStart = 0;
};
