#include "integrityCheck.h"

#include <sqlite3.h>

#include <filesystem>

#include "sqlite/hardening.h"

namespace {

using Report = std::function<void(const std::string&)>;

int takeRow(void* report, int /*count*/, char** cells, char** /*names*/)
{
    const std::string words = cells[0] == nullptr ? "" : cells[0];
    if (words != "ok") {
        (*static_cast<const Report*>(report))(words);
    }
    return 0;
}

}  // namespace

void integrityCheck(const std::string& file, const Report& report)
{
    const std::string path = std::filesystem::absolute(file).string();
    sqlite3* db = nullptr;
    if (sqlite3_open_v2(path.c_str(), &db, SQLITE_OPEN_READONLY, nullptr) == SQLITE_OK) {
        harden(db);
        Report taken = report;
        if (sqlite3_exec(db, "PRAGMA query_only=ON; PRAGMA integrity_check", takeRow, &taken,
                         nullptr) != SQLITE_OK) {
            report(sqlite3_errmsg(db));
        }
    }
    sqlite3_close(db);
}
