#include "QueryBudget.h"

#include <sqlite3.h>
#include <time.h>

#include <algorithm>

#include "databaseSize.h"

namespace {

/// Steps of SQLite's machine between two looks at the budget: so many that a look costs nothing, so
/// few that they cannot take much. Most lookups end before the first.
constexpr int STEPS_PER_LOOK = 250;

/// Of the processor's time, so that neither a busy device nor a wait for a writer counts. Reading a
/// hundred thousand texts takes a slow device one second.
constexpr int MOST_SECONDS = 10;

/// A cell takes one byte of the file at the least and some 40 bytes of a result: a table as it was
/// created comes to no more than this, a view without end does.
constexpr long long MOST_MEMORY_PER_FILE_BYTE = 64;

/// 65,536 rows, as many as ids have, of 2 KiB each: what a view over shared texts comes to.
constexpr long long MOST_MEMORY_OF_SMALL_FILE = 128LL * 1024 * 1024;

/// sqlite3_get_table() keeps a pointer to each cell, in an array of which up to half is not in use,
/// and a copy of its text, which takes no less than three words.
constexpr int MOST_OVERHEAD_OF_CELL = 5 * sizeof(char*);

/// Whole seconds: 10 of them are at least 9 and no more than 10.
int secondsOf(clockid_t clock)
{
    timespec time = {};
    clock_gettime(clock, &time);
    return static_cast<int>(time.tv_sec);
}

}  // namespace

QueryBudget::QueryBudget(sqlite3* db) : m_db(db), m_memoryAtStart(sqlite3_memory_used())
{
    lookEvery(STEPS_PER_LOOK);
}

QueryBudget::~QueryBudget()
{
    sqlite3_progress_handler(m_db, 0, nullptr, nullptr);
    if (m_countsResult) {
        sqlite3_trace_v2(m_db, 0, nullptr, nullptr);
    }
}

void QueryBudget::lookOften()
{
    lookEvery(1);
}

void QueryBudget::lookEvery(int steps)
{
    sqlite3_progress_handler(m_db, steps, isSpent, this);
}

void QueryBudget::countResult(bool withFileCode)
{
    m_countsResult = true;
    m_countsAll = withFileCode;
    m_memoryAtStart = sqlite3_memory_used();
    sqlite3_trace_v2(m_db, SQLITE_TRACE_ROW, addRow, this);
}

int QueryBudget::addRow(unsigned /*event*/, void* budget, void* statement, void* /*unused*/)
{
    auto* const row = static_cast<sqlite3_stmt*>(statement);
    long long size = 0;
    for (int i = sqlite3_column_count(row) - 1; i >= 0; --i) {
        size += MOST_OVERHEAD_OF_CELL + sqlite3_column_bytes(row, i);
    }
    static_cast<QueryBudget*>(budget)->m_resultSize += size;
    return 0;
}

int QueryBudget::isSpent(void* budget)
{
    QueryBudget& self = *static_cast<QueryBudget*>(budget);
    self.m_wasEndedForMemory = self.takesTooMuchMemory();
    return self.m_wasEndedForMemory || self.takesTooLong() ? 1 : 0;
}

bool QueryBudget::takesTooMuchMemory()
{
    const long long ofAll = m_countsAll ? sqlite3_memory_used() - m_memoryAtStart : 0;
    const long long taken = m_countsResult ? std::max(m_resultSize, ofAll - m_resultSize) : ofAll;
    return taken > MOST_MEMORY_OF_SMALL_FILE &&
           taken > MOST_MEMORY_PER_FILE_BYTE * databaseSize(m_db);
}

// The processor's time never outruns the clock, which unlike it can be read without a system call.
bool QueryBudget::takesTooLong()
{
    const int now = secondsOf(CLOCK_MONOTONIC);
    if (m_start < 0) {
        m_start = now;
        m_processorTimeAtStart = secondsOf(CLOCK_THREAD_CPUTIME_ID);
    }
    return now - m_start >= MOST_SECONDS &&
           secondsOf(CLOCK_THREAD_CPUTIME_ID) - m_processorTimeAtStart >= MOST_SECONDS;
}
