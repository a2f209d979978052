#include "Cost.h"

#include <sys/resource.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>

namespace {

void printMemory()
{
    long privateDirty = 0;
    long shared = 0;
    char line[200];
    std::FILE* const file = std::fopen("/proc/self/smaps_rollup", "r");
    while (file != nullptr && std::fgets(line, sizeof line, file) != nullptr) {
        long kilobytes = 0;
        if (std::sscanf(line, "Private_Dirty: %ld", &kilobytes) == 1) {
            privateDirty = kilobytes;
        } else if (std::sscanf(line, "Shared_Clean: %ld", &kilobytes) == 1 ||
                   std::sscanf(line, "Shared_Dirty: %ld", &kilobytes) == 1) {
            shared += kilobytes;
        }
    }
    std::printf(" %ld %ld\n", privateDirty, shared);
}

}  // namespace

int countCost(CostReader& reader, int argc, char** argv)
{
    if (argc != 3) {
        return 2;
    }
    const auto last = static_cast<Stage>(std::atoi(argv[2]));
    if (last >= Stage::OPENED && !reader.open(argv[1])) {
        return 1;
    }
    for (Stage stage = Stage::TEXTS_OF_CODE; stage <= last;
         stage = static_cast<Stage>(static_cast<int>(stage) + 1)) {
        if (reader.ask(stage) == 0) {
            return 1;
        }
    }
    timespec used = {};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &used);
    rusage usage = {};
    getrusage(RUSAGE_SELF, &usage);
    std::printf("cost %lld %ld", used.tv_sec * 1000000000LL + used.tv_nsec, usage.ru_minflt);
    printMemory();
    return 0;
}
