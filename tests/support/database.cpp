#include "support/database.h"

#include <sqlite3.h>

#include <fstream>
#include <iterator>
#include <memory>
#include <stdexcept>

void runSql(const std::string& file, const std::string& sql)
{
    sqlite3* opened = nullptr;
    const int code =
        sqlite3_open_v2(file.c_str(), &opened, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, nullptr);
    const std::unique_ptr<sqlite3, decltype(&sqlite3_close)> db(opened, sqlite3_close);
    if (code != SQLITE_OK ||
        sqlite3_exec(db.get(), sql.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK) {
        throw std::runtime_error(file + ": " + sqlite3_errmsg(db.get()) + " in: " + sql);
    }
}

std::string schemaSql()
{
    std::ifstream stream(ZAV_SOURCE_DIR "/db/schema.sql");
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

std::string makeDatabase(const std::string& file, const std::string& furtherSql)
{
    runSql(file, "BEGIN;" + schemaSql() + furtherSql + ";COMMIT;");
    return file;
}
