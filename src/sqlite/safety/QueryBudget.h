#pragma once

struct sqlite3;

/// While it lives, bounds the time and the memory of what SQLite runs on a connection: a view in
/// place of a table may never end. What takes far more than reading a database of fault definitions
/// is ended, with SQLite's "interrupted".
///
/// SQLite counts the memory of the whole process only. Once that has grown much, the query is ended
/// and can be run again, with its own result counted alone.
class QueryBudget {
public:
    explicit QueryBudget(sqlite3* db);
    ~QueryBudget();
    QueryBudget(const QueryBudget&) = delete;
    QueryBudget& operator=(const QueryBudget&) = delete;

    /// Looks at the budget after each step, for a query with code of the file, whose every row may
    /// take much.
    void lookOften();

    /// @return whether the memory has ended a query that may have taken only a part of it.
    bool wasEndedForMemoryOfAll() const { return m_wasEndedForMemory && !m_countsResult; }

    /// Counts the result of the next run.
    ///
    /// @param withFileCode  whether what SQLite needs besides counts, too, to sort a view for
    ///                      instance; with it counts what others take meanwhile.
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
