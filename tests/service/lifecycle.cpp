// A program of its own for what only a whole process shows: the state before any call, and the
// order in which things go at exit. Its argument says how far it goes.

#include <sqlite3.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <new>
#include <string>
#include <vector>

#include "support/autoExtension.h"
#include "zav/DescriptionDb.h"

namespace {

// Initialised before main(): the library has been loaded and nothing of it been called.
const int SERVICE_LEVEL_AT_LOAD = DescriptionDb::m_Debug;
const std::uint32_t CONNECTION_LEVEL_AT_LOAD = DescriptionDb::sqliteDb.m_dbgLevel;
const bool IS_CLOSED_AT_LOAD = DescriptionDb::sqliteDb.m_dbState == 0;
const bool IS_INSTANCE_NULL_AT_LOAD = DescriptionDb::m_pInstance == nullptr;

DescriptionDb* g_instance = nullptr;  // a copy: the library may change its own

/// Goes between the instance, which is made after it, and the connection, which was made before.
const struct Between {
    ~Between()
    {
        if (g_instance != nullptr) {
            std::printf("connection is %s\n",
                        DescriptionDb::sqliteDb.m_dbState == 1 ? "still open" : "closed");
        }
    }
} BETWEEN;

void printStateAtLoad()
{
    std::printf("service level %d, connection level %u, %s, instance %s\n", SERVICE_LEVEL_AT_LOAD,
                CONNECTION_LEVEL_AT_LOAD, IS_CLOSED_AT_LOAD ? "closed" : "open",
                IS_INSTANCE_NULL_AT_LOAD ? "null" : "made");
}

void callEverythingButOpen()
{
    DescriptionDb* const service = DescriptionDb::getInstance();
    service->setDbgLevel(2);
    service->closeDb();
    std::vector<FaultTypeDef> faultTypeDefs;
    FaultTypeDef faultTypeDef;
    std::vector<Descriptions> descriptions;
    service->getFaultTypeDefTbl(faultTypeDefs);
    service->getFaultTypeDef(1, faultTypeDef);
    service->getDescriptionsTbl(descriptions);
    service->getDescriptionsByFC(1, descriptions);
}

int printClosing(unsigned /*event*/, void* /*context*/, void* /*db*/, void* /*unused*/)
{
    std::printf("connection closes, instance pointer %s\n",
                DescriptionDb::m_pInstance == g_instance ? "kept" : "changed");
    return 0;
}

void open(const char* file)
{
    g_instance = DescriptionDb::getInstance();
    addAutoExtension([](sqlite3* db, char**, const sqlite3_api_routines*) {
        return sqlite3_trace_v2(db, SQLITE_TRACE_CLOSE, printClosing, nullptr);
    });
    g_instance->openDb(file, true);
}

}  // namespace

void* operator new(std::size_t size)
{
    void* const memory = std::malloc(size > 0 ? size : 1);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    return memory;
}

void operator delete(void* memory) noexcept
{
    if (memory != nullptr && memory == g_instance) {
        std::printf("instance destroyed\n");
    }
    std::free(memory);
}

void operator delete(void* memory, std::size_t /*size*/) noexcept
{
    operator delete(memory);
}

int main(int count, char** arguments)
{
    const std::string mode = count > 1 ? arguments[1] : "";
    if (mode == "state-at-load") {
        printStateAtLoad();
    } else if (mode == "everything-but-open") {
        callEverythingButOpen();
    } else if (mode == "open" && count > 2) {
        open(arguments[2]);
    } else if (mode == "nothing") {
        std::printf("main ends\n");
    } else {
        return 2;
    }
    return 0;
}
