#include "integrityCheck.h"

#include <sqlite3.h>

#include <filesystem>
#include <sstream>

#include "sqlite/safety/hardening.h"

namespace {

using Report = std::function<void(const std::string&)>;

/// A row may hold several lines, of which the first names the database and no damage.
int takeRow(void* report, int /*count*/, char** cells, char** /*names*/)
{
    std::istringstream lines(cells[0] == nullptr ? "" : cells[0]);
    for (std::string line; std::getline(lines, line);) {
        if (line != "ok" && line.rfind("*** in database ", 0) != 0) {
            (*static_cast<const Report*>(report))(line);
        }
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
