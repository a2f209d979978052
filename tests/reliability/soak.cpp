// Years in short: soak CYCLES opens, queries, misses, fails and closes so many times, and ends with
// 1 if descriptors or memory have grown. To be run with GLIBC_TUNABLES=glibc.malloc.tcache_count=0:
// what the allocator keeps for its threads counts as in use.

#include <chrono>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <string>
#include <vector>

#include "support/TempDir.h"
#include "support/Usage.h"
#include "support/database.h"
#include "zav/DescriptionDb.h"

namespace {

void check(bool holds, const char* what)
{
    if (!holds) {
        std::cerr << "unexpected: " << what << "\n";
        std::exit(1);
    }
}

class Soak {
public:
    void run(long cycles)
    {
        for (long i = 0; i < cycles; ++i) {
            runOnce();
        }
    }

private:
    void runOnce()
    {
        std::vector<FaultTypeDef> faultTypes;
        std::vector<Descriptions> descriptions;
        FaultTypeDef faultType;

        check(m_service.openDb(m_healthy, true) == 0, "open");
        check(m_service.getFaultTypeDefTbl(faultTypes) == 1, "all fault types");
        check(m_service.getDescriptionsTbl(descriptions) == 1, "all descriptions");
        check(m_service.getFaultTypeDef(17, faultType) == 0, "hit");
        check(m_service.getFaultTypeDef(99, faultType) == -1, "miss");
        check(m_service.getDescriptionsByFC(99, descriptions) == 0, "descriptions of a miss");
        check(m_service.openDb(m_healthy, true) == -1, "second open");
        check(m_service.closeDb() == 0, "close");

        check(m_service.openDb(m_damaged, true) == 0, "open a damaged file");
        check(m_service.getDescriptionsTbl(descriptions) == -2, "query a damaged file");
        check(m_service.closeDb() == 0, "close a damaged file");
        check(m_service.closeDb() == -1, "second close");
        check(m_service.openDb(m_missing, true) == -2, "open a missing file");
    }

    TempDir m_dir;
    const std::string m_healthy = makeDatabase(
        m_dir.file("faults.db"),
        "INSERT INTO fault_type_definition VALUES (17, 'E017', 'error', 3, 5);"
        "INSERT INTO descriptions VALUES (1, 17, 2, 'Overheat', 'Too hot', '', NULL, 'x')");
    const std::string m_damaged = [this] {
        setContents(m_dir.file("damaged.db"), contents(m_healthy).substr(0, 4096));
        return m_dir.file("damaged.db");
    }();
    const std::string m_missing = m_dir.file("missing.db");
    DescriptionDb& m_service = *DescriptionDb::getInstance();
};

}  // namespace

int main(int argc, char** argv)
{
    const long cycles = argc == 2 ? std::strtol(argv[1], nullptr, 10) : 0;
    if (cycles <= 0) {
        std::cerr << "usage: soak CYCLES\n";
        return 2;
    }
    std::ofstream nowhere("/dev/null");
    std::cout.rdbuf(nowhere.rdbuf());

    Soak soak;
    soak.run(10);  // what is made once and kept
    const Usage before = usage();
    print("before", before);
    const auto start = std::chrono::steady_clock::now();
    soak.run(cycles);
    const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - start;
    const Usage after = usage();
    print("after", after);
    std::cerr << cycles << " cycles in " << seconds.count() << " s\n";
    std::cout.rdbuf(nullptr);

    check(after.descriptors == before.descriptors, "descriptors have grown");
    check(after.sqliteBytes == before.sqliteBytes, "SQLite's memory has grown");
    // A block may be 16 bytes larger than asked for, as it comes; what leaks, leaks in each cycle.
    check(after.heapBytes < before.heapBytes + cycles, "the heap has grown");
    return 0;
}
