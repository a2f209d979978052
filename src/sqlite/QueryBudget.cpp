#include "QueryBudget.h"

#include <sqlite3.h>
#include <time.h>

namespace {

/// Steps of SQLite's machine between two looks at the clock: so many that a look costs nothing, so
/// few that they cannot take long even on the longest texts. Most lookups end before the first.
constexpr int STEPS_PER_LOOK = 1000;

/// Of the processor's time, so that neither a busy device nor a wait for a writer counts. Reading a
/// hundred thousand texts takes a slow device one second.
constexpr std::chrono::seconds MOST_PROCESSOR_TIME(10);

/// A cell takes one byte of the file at the least and some 40 bytes of a result: a table as it was
/// created comes to no more than this, a view without end does.
constexpr long long MOST_MEMORY_PER_FILE_BYTE = 64;
constexpr long long MOST_MEMORY_OF_SMALL_FILE = 64LL * 1024 * 1024;

std::chrono::nanoseconds processorTime()
{
    timespec time = {};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

long long fileSize(sqlite3* db, int whichFile)
{
    sqlite3_file* file = nullptr;
    sqlite3_int64 size = 0;
    if (sqlite3_file_control(db, "main", whichFile, &file) == SQLITE_OK &&
        file->pMethods != nullptr) {
        file->pMethods->xFileSize(file, &size);
    }
    return size;
}

/// Of the files that are open, whatever their paths name by now. In WAL mode most of a database may
/// still be in its log.
long long databaseSize(sqlite3* db)
{
    return fileSize(db, SQLITE_FCNTL_FILE_POINTER) + fileSize(db, SQLITE_FCNTL_JOURNAL_POINTER);
}

}  // namespace

QueryBudget::QueryBudget(sqlite3* db) : m_db(db)
{
    sqlite3_progress_handler(db, STEPS_PER_LOOK, isSpent, this);
}

QueryBudget::~QueryBudget()
{
    sqlite3_progress_handler(m_db, 0, nullptr, nullptr);
}

int QueryBudget::isSpent(void* budget)
{
    QueryBudget& self = *static_cast<QueryBudget*>(budget);
    if (!self.m_started) {
        self.start();
    }
    return self.takesTooMuchMemory() || self.takesTooLong() ? 1 : 0;
}

void QueryBudget::start()
{
    m_started = true;
    m_memoryAtStart = sqlite3_memory_used();
    m_processorTimeAtStart = processorTime();
    m_start = std::chrono::steady_clock::now();
}

bool QueryBudget::takesTooMuchMemory() const
{
    const long long taken = sqlite3_memory_used() - m_memoryAtStart;
    return taken > MOST_MEMORY_OF_SMALL_FILE &&
           taken > MOST_MEMORY_PER_FILE_BYTE * databaseSize(m_db);
}

// The processor's time never outruns the clock, which unlike it can be read without a system call.
bool QueryBudget::takesTooLong() const
{
    return std::chrono::steady_clock::now() - m_start > MOST_PROCESSOR_TIME &&
           processorTime() - m_processorTimeAtStart > MOST_PROCESSOR_TIME;
}
