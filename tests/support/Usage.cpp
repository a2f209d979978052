#include "support/Usage.h"

#include <malloc.h>
#include <sqlite3.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>

Usage usage()
{
    namespace fs = std::filesystem;
    long total = 0;
    long resident = 0;
    std::ifstream("/proc/self/statm") >> total >> resident;
    const struct mallinfo2 heap = mallinfo2();
    return {std::distance(fs::directory_iterator("/proc/self/fd"), fs::directory_iterator()),
            static_cast<long long>(heap.uordblks + heap.hblkhd), sqlite3_memory_used(),
            resident * (sysconf(_SC_PAGESIZE) / 1024)};
}

void print(const char* when, const Usage& used)
{
    std::cerr << when << ": " << used.descriptors << " descriptors, heap " << used.heapBytes
              << " bytes, SQLite " << used.sqliteBytes << " bytes, resident "
              << used.residentKilobytes << " KB\n";
}
