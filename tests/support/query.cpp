#include "support/query.h"

#include <sqlite3.h>

namespace {

std::string textOrNull(const char* text)
{
    return text != nullptr ? text : "NULL";
}

}  // namespace

std::string query(const Sqlite3Db& db, const std::string& sql)
{
    char** result = nullptr;
    int rows = 0;
    int columns = 0;
    char* errorText = nullptr;
    const int code = db.getTable(sql, &result, &rows, &columns, &errorText);
    std::string outcome;
    if (code != SQLITE_OK) {
        outcome = std::to_string(code) + ": " + textOrNull(errorText);
    } else {
        for (int i = 0; i < (rows + 1) * columns; ++i) {
            outcome += (i > 0 ? "|" : "") + textOrNull(result[i]);
        }
    }
    sqlite3_free(errorText);
    sqlite3_free_table(result);
    return outcome;
}
