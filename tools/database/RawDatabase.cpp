#include "RawDatabase.h"

#include <sqlite3.h>

#include <filesystem>

#include "DatabaseErrors.h"
#include "deliveredNumber.h"
#include "sqlite/safety/hardening.h"
#include "text/formatted.h"

namespace {

constexpr int BUSY_TIMEOUT_MS = 5000;  // as the library waits

CellType cellType(int sqliteType)
{
    switch (sqliteType) {
    case SQLITE_INTEGER:
        return CellType::INTEGER;
    case SQLITE_FLOAT:
        return CellType::REAL;
    case SQLITE_TEXT:
        return CellType::TEXT;
    case SQLITE_BLOB:
        return CellType::BLOB;
    default:
        return CellType::NONE;
    }
}

std::string_view viewOf(const unsigned char* start, int size)
{
    const auto* bytes = static_cast<const char*>(static_cast<const void*>(start));
    return start == nullptr ? std::string_view()
                            : std::string_view(bytes, static_cast<std::size_t>(size));
}

/// The SQL function delivered(); where the library finds no number it delivers 0.
void deliver(sqlite3_context* context, int /*count*/, sqlite3_value** arguments)
{
    const auto kind = static_cast<FieldKind>(sqlite3_value_int(arguments[1]));
    const unsigned char* start = sqlite3_value_text(arguments[0]);
    const RawCellView cell = {CellType::TEXT, viewOf(start, sqlite3_value_bytes(arguments[0]))};
    const std::uint64_t number = deliveredNumber(std::string(cell.text()), kind).value_or(0);
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
        m_row = RawRow(m_statement);
    }
    ~Statement() { sqlite3_finalize(m_statement); }
    Statement(const Statement&) = delete;
    Statement& operator=(const Statement&) = delete;

    /// @return false for a statement that makes no sense for this database.
    bool isValid() const { return m_statement != nullptr; }

    /// @return whether there is another row; a statement that makes no sense fails as it would when
    ///         prepared.
    bool step()
    {
        const int code = sqlite3_step(m_statement);
        if (code != SQLITE_ROW && code != SQLITE_DONE) {
            m_database.fail();
        }
        const bool hasRow = code == SQLITE_ROW;
        if (hasRow) {
            m_row.noteTypes();
        }
        return hasRow;
    }

    /// Starts again, with a number in the place of ?1.
    void restart(std::int64_t number)
    {
        sqlite3_reset(m_statement);
        sqlite3_bind_int64(m_statement, 1, number);
    }

    const RawRow& row() const { return m_row; }

    std::vector<std::string> columnNames() const
    {
        std::vector<std::string> names;
        for (int i = 0; i < sqlite3_column_count(m_statement); ++i) {
            names.emplace_back(sqlite3_column_name(m_statement, i));
        }
        return names;
    }

private:
    const RawDatabase& m_database;
    sqlite3_stmt* m_statement = nullptr;
    RawRow m_row{nullptr};
};

void RawRow::noteTypes()
{
    m_types.clear();
    for (int i = 0; i < columnCount(); ++i) {
        m_types.push_back(cellType(sqlite3_column_type(m_statement, i)));
    }
}

int RawRow::columnCount() const
{
    return sqlite3_column_count(m_statement);
}

RawCellView RawRow::cell(int index) const
{
    const unsigned char* start = sqlite3_column_text(m_statement, index);
    return {m_types[static_cast<std::size_t>(index)],
            viewOf(start, sqlite3_column_bytes(m_statement, index))};
}

RawDatabase::RawDatabase(const std::string& file)
{
    // An absolute path is never taken as a URI, nor as a database in memory.
    const std::string path = std::filesystem::absolute(file).string();
    const int code =
        sqlite3_open_v2(path.c_str(), &m_db, SQLITE_OPEN_READONLY | SQLITE_OPEN_NOMUTEX, nullptr);
    if (code == SQLITE_OK) {
        harden(m_db);
        restrictToReading(m_db);
        limitQuery(m_db);
    }
    sqlite3_busy_timeout(m_db, BUSY_TIMEOUT_MS);
    sqlite3_create_function(m_db, "delivered", 2, SQLITE_UTF8, nullptr, deliver, nullptr, nullptr);
    if (code != SQLITE_OK || sqlite3_exec(m_db, "BEGIN; SELECT count(*) FROM sqlite_master",
                                          nullptr, nullptr, nullptr) != SQLITE_OK) {
        const std::string reason = sqlite3_errmsg(m_db);
        sqlite3_close(m_db);
        throw FailedQuery(reason);
    }
}

RawDatabase::~RawDatabase()
{
    sqlite3_close(m_db);
}

std::optional<std::vector<std::string>> RawDatabase::columnsOf(const std::string& table) const
{
    const Statement select(*this, formatted(R"(SELECT * FROM "{}")", table));
    return select.isValid() ? std::optional(select.columnNames()) : std::nullopt;
}

bool RawDatabase::isView(const std::string& table) const
{
    Statement select(*this, formatted("SELECT 1 FROM sqlite_master WHERE name='{}' COLLATE "
                                      "NOCASE AND type IN('table','view') AND rootpage=0",
                                      table));
    return select.isValid() && select.step();
}

bool RawDatabase::accepts(const std::string& sql) const
{
    return Statement(*this, sql).isValid();
}

void RawDatabase::read(const std::string& sql, const std::function<void(const RawRow&)>& take) const
{
    Statement select(*this, sql);
    while (select.step()) {
        take(select.row());
    }
}

void RawDatabase::readFor(const std::vector<std::int64_t>& numbers, const std::string& sql,
                          const std::function<void(std::int64_t, const RawRow&)>& take) const
{
    Statement select(*this, sql);
    for (const std::int64_t number : numbers) {
        select.restart(number);
        while (select.step()) {
            take(number, select.row());
        }
    }
}

bool RawDatabase::readsWholeTable(const std::string& query) const
{
    constexpr int DETAIL = 3;  // column of the plan
    Statement plan(*this, "EXPLAIN QUERY PLAN " + query);
    while (plan.isValid() && plan.step()) {
        if (plan.row().cell(DETAIL).text().rfind("SCAN", 0) == 0) {
            return true;
        }
    }
    return false;
}

void RawDatabase::fail() const
{
    throw FailedQuery(sqlite3_errmsg(m_db));
}
