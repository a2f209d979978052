#include "integrityCheck.h"

#include <sqlite3.h>

#include <algorithm>
#include <filesystem>
#include <limits>

#include "sqlite/hardening.h"

namespace {

using Report = std::function<void(const std::string&)>;

constexpr std::uintmax_t MEBIBYTE = 1024 * 1024;

/// No value is longer than the file, but for what a file computes to do harm. The memory is that of
/// the page cache and of a few values.
void limitMemory(sqlite3* db, std::uintmax_t fileSize)
{
    constexpr std::uintmax_t LEAST_LENGTH = 16 * MEBIBYTE;
    constexpr std::uintmax_t MOST_LENGTH = std::numeric_limits<int>::max();
    const std::uintmax_t length = std::clamp(fileSize, LEAST_LENGTH, MOST_LENGTH);
    sqlite3_limit(db, SQLITE_LIMIT_LENGTH, static_cast<int>(length));
    sqlite3_hard_heap_limit64(static_cast<sqlite3_int64>(128 * MEBIBYTE + 4 * fileSize));
}

int takeRow(void* report, int /*count*/, char** cells, char** /*names*/)
{
    const std::string words = cells[0] == nullptr ? "" : cells[0];
    if (words != "ok") {
        (*static_cast<const Report*>(report))(words);
    }
    return 0;
}

}  // namespace

void integrityCheck(const std::string& file, std::uintmax_t fileSize, const Report& report)
{
    const std::string path = std::filesystem::absolute(file).string();
    sqlite3* db = nullptr;
    if (sqlite3_open_v2(path.c_str(), &db, SQLITE_OPEN_READONLY, nullptr) == SQLITE_OK) {
        harden(db);
        limitMemory(db, fileSize);
        Report taken = report;
        if (sqlite3_exec(db, "PRAGMA query_only=ON; PRAGMA integrity_check", takeRow, &taken,
                         nullptr) != SQLITE_OK) {
            report(sqlite3_errmsg(db));
        }
    }
    sqlite3_close(db);
}
