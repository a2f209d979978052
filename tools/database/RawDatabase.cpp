#include "RawDatabase.h"

#include <fmt/format.h>
#include <sqlite3.h>

#include <filesystem>

#include "DatabaseErrors.h"
#include "deliveredNumber.h"

namespace {

constexpr int BUSY_TIMEOUT_MS = 5000;  // as the library waits

/// The SQL function delivered(); where the library finds no number it delivers 0.
void deliver(sqlite3_context* context, int /*count*/, sqlite3_value** arguments)
{
    const unsigned char* start = sqlite3_value_text(arguments[0]);
    const auto size = static_cast<std::size_t>(sqlite3_value_bytes(arguments[0]));
    const RawCell cell = {start == nullptr, std::string(start, start + size)};
    const auto kind = static_cast<FieldKind>(sqlite3_value_int(arguments[1]));
    const std::uint64_t number = deliveredNumber(cell.text(), kind).value_or(0);
    sqlite3_result_int64(context, static_cast<sqlite3_int64>(number));
}

}  // namespace

class RawDatabase::Statement {
public:
    Statement(const RawDatabase& database, const std::string& sql) : m_database(database)
    {
        const int code = sqlite3_prepare_v2(database.m_db, sql.c_str(), -1, &m_statement, nullptr);
        if (code != SQLITE_OK && code != SQLITE_ERROR) {
            database.fail();
        }
    }
    ~Statement() { sqlite3_finalize(m_statement); }
    Statement(const Statement&) = delete;
    Statement& operator=(const Statement&) = delete;

    /// @return false for a statement that makes no sense for this database.
    bool isValid() const { return m_statement != nullptr; }

    /// @return whether there is another row.
    bool step()
    {
        const int code = sqlite3_step(m_statement);
        if (code != SQLITE_ROW && code != SQLITE_DONE) {
            m_database.fail();
        }
        return code == SQLITE_ROW;
    }

    int columnCount() const { return sqlite3_column_count(m_statement); }

    std::string columnName(int index) const { return sqlite3_column_name(m_statement, index); }

    RawCell cell(int index) const
    {
        const unsigned char* text = sqlite3_column_text(m_statement, index);
        if (text == nullptr) {
            return {true, ""};
        }
        const int size = sqlite3_column_bytes(m_statement, index);
        return {false, std::string(text, text + size)};
    }

private:
    const RawDatabase& m_database;
    sqlite3_stmt* m_statement = nullptr;
};

RawDatabase::RawDatabase(const std::string& file) : m_file(file)
{
    // An absolute path is never taken as a URI, nor as a database in memory.
    const std::string path = std::filesystem::absolute(file).string();
    const int code =
        sqlite3_open_v2(path.c_str(), &m_db, SQLITE_OPEN_READONLY | SQLITE_OPEN_NOMUTEX, nullptr);
    sqlite3_busy_timeout(m_db, BUSY_TIMEOUT_MS);
    sqlite3_create_function(m_db, "delivered", 2, SQLITE_UTF8, nullptr, deliver, nullptr, nullptr);
    if (code != SQLITE_OK || sqlite3_exec(m_db, "BEGIN; SELECT count(*) FROM sqlite_master",
                                          nullptr, nullptr, nullptr) != SQLITE_OK) {
        const std::string reason = sqlite3_errmsg(m_db);
        sqlite3_close(m_db);
        throw UnreadableFile(fmt::format("{}: cannot be read: {}", file, reason));
    }
}

RawDatabase::~RawDatabase()
{
    sqlite3_close(m_db);
}

std::optional<RawTable> RawDatabase::table(const std::string& name) const
{
    Statement select(*this, fmt::format(R"(SELECT * FROM "{}")", name));
    if (!select.isValid()) {
        return std::nullopt;
    }
    RawTable table;
    table.columns.reserve(static_cast<std::size_t>(select.columnCount()));
    for (int i = 0; i < select.columnCount(); ++i) {
        table.columns.push_back(select.columnName(i));
    }
    while (select.step()) {
        std::vector<RawCell>& row = table.rows.emplace_back();
        row.reserve(table.columns.size());
        for (int i = 0; i < select.columnCount(); ++i) {
            row.push_back(select.cell(i));
        }
    }
    return table;
}

bool RawDatabase::accepts(const std::string& sql) const
{
    return Statement(*this, sql).isValid();
}

std::vector<bool> RawDatabase::holds(const std::string& condition, const std::string& name) const
{
    // With all columns, as for table(): by fewer, SQLite may read an index in another order.
    Statement select(*this, fmt::format(R"(SELECT *, {} FROM "{}")", condition, name));
    std::vector<bool> results;
    while (select.isValid() && select.step()) {
        results.push_back(select.cell(select.columnCount() - 1).bytes == "1");
    }
    return results;
}

bool RawDatabase::readsWholeTable(const std::string& query) const
{
    constexpr int DETAIL = 3;  // column of the plan
    Statement plan(*this, "EXPLAIN QUERY PLAN " + query);
    while (plan.isValid() && plan.step()) {
        if (plan.cell(DETAIL).text().rfind("SCAN", 0) == 0) {
            return true;
        }
    }
    return false;
}

void RawDatabase::fail() const
{
    throw UnreadableFile(fmt::format("{}: cannot be read: {}", m_file, sqlite3_errmsg(m_db)));
}
