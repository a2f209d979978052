#include "support/FailingSqlite.h"

#include <sqlite3.h>

namespace {

/// Counts down to the operation that fails.
class Countdown {
public:
    void start(long which)
    {
        m_left = which;
        m_isSet = which > 0;
    }
    bool failsNow() { return m_left > 0 && --m_left == 0; }
    bool hasFailed() const { return m_isSet && m_left == 0; }

private:
    long m_left = 0;
    bool m_isSet = false;
};

Countdown g_allocations;
sqlite3_mem_methods g_memory;

void* allocate(int size)
{
    return g_allocations.failsNow() ? nullptr : g_memory.xMalloc(size);
}

void* reallocate(void* memory, int size)
{
    return g_allocations.failsNow() ? nullptr : g_memory.xRealloc(memory, size);
}

void useMemory(sqlite3_mem_methods methods)
{
    sqlite3_shutdown();
    sqlite3_config(SQLITE_CONFIG_MALLOC, &methods);
    sqlite3_initialize();
}

}  // namespace

FailingSqliteMemory::FailingSqliteMemory()
{
    sqlite3_initialize();
    sqlite3_shutdown();
    sqlite3_config(SQLITE_CONFIG_GETMALLOC, &g_memory);
    sqlite3_mem_methods failing = g_memory;
    failing.xMalloc = allocate;
    failing.xRealloc = reallocate;
    useMemory(failing);
}

FailingSqliteMemory::~FailingSqliteMemory()
{
    failAt(0);
    useMemory(g_memory);
}

void FailingSqliteMemory::failAt(long which)
{
    g_allocations.start(which);
}

bool FailingSqliteMemory::hasFailed()
{
    return g_allocations.hasFailed();
}

namespace {

Countdown g_reads;
sqlite3_vfs* g_systemVfs = nullptr;
sqlite3_vfs g_failingVfs;
sqlite3_io_methods g_failingFile;
int (*g_systemRead)(sqlite3_file*, void*, int, sqlite3_int64) = nullptr;

int readOrFail(sqlite3_file* file, void* buffer, int size, sqlite3_int64 offset)
{
    return g_reads.failsNow() ? SQLITE_IOERR_READ : g_systemRead(file, buffer, size, offset);
}

/// Opens as the system's VFS does, and puts readOrFail() in its file's place for reads.
int openFailing(sqlite3_vfs* /*vfs*/, const char* name, sqlite3_file* file, int flags,
                int* flagsUsed)
{
    const int code = g_systemVfs->xOpen(g_systemVfs, name, file, flags, flagsUsed);
    if (code == SQLITE_OK && (flags & SQLITE_OPEN_MAIN_DB) != 0) {
        g_failingFile = *file->pMethods;
        g_systemRead = g_failingFile.xRead;
        g_failingFile.xRead = readOrFail;
        file->pMethods = &g_failingFile;
    }
    return code;
}

}  // namespace

FailingSqliteReads::FailingSqliteReads()
{
    g_systemVfs = sqlite3_vfs_find(nullptr);
    g_failingVfs = *g_systemVfs;
    g_failingVfs.zName = "failing";
    g_failingVfs.xOpen = openFailing;
    sqlite3_vfs_register(&g_failingVfs, 1);
}

FailingSqliteReads::~FailingSqliteReads()
{
    failAt(0);
    sqlite3_vfs_unregister(&g_failingVfs);
    sqlite3_vfs_register(g_systemVfs, 1);
}

void FailingSqliteReads::failAt(long which)
{
    g_reads.start(which);
}

bool FailingSqliteReads::hasFailed()
{
    return g_reads.hasFailed();
}
