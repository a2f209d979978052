#include "writeStored.h"

#include <sqlite3.h>

#include <filesystem>
#include <memory>

#include "database/DatabaseErrors.h"
#include "database/TableModel.h"
#include "schema.h"
#include "text/formatted.h"

namespace {

/// Nothing is flushed, and no journal kept, since nobody uses the file before it is put in place.
/// What would depend on how SQLite was built is set, so that every SQLite makes the same file.
constexpr const char* SETTINGS =
    "PRAGMA page_size=4096; PRAGMA encoding='UTF-8'; PRAGMA auto_vacuum=NONE;"
    "PRAGMA journal_mode=OFF; PRAGMA synchronous=OFF; PRAGMA locking_mode=EXCLUSIVE";

class Writer {
public:
    explicit Writer(const std::string& path) : m_path(path)
    {
        const std::string absolute = std::filesystem::absolute(path).string();
        sqlite3* opened = nullptr;
        const int code = sqlite3_open_v2(absolute.c_str(), &opened,
                                         SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr);
        m_db.reset(opened);
        require(code);
    }

    void run(const std::string& sql)
    {
        require(sqlite3_exec(m_db.get(), sql.c_str(), nullptr, nullptr, nullptr));
    }

    /// @param givesIds  whether the rows lack the first column, a number that counts them.
    void insert(const TableModel& table, const std::vector<StoredRow>& rows, bool givesIds)
    {
        const std::string values = listed(std::vector<const char*>(table.columns.size(), "?"), ",");
        const std::string sql = formatted(R"(INSERT INTO "{}" VALUES({}))", table.name, values);
        sqlite3_stmt* prepared = nullptr;
        require(sqlite3_prepare_v2(m_db.get(), sql.c_str(), -1, &prepared, nullptr));
        const std::unique_ptr<sqlite3_stmt, decltype(&sqlite3_finalize)> statement(
            prepared, sqlite3_finalize);
        sqlite3_int64 id = 0;
        for (const StoredRow& row : rows) {
            int position = 0;
            if (givesIds) {
                require(sqlite3_bind_int64(prepared, ++position, ++id));
            }
            for (const RawCell& cell : row) {
                require(bind(prepared, ++position, cell));
            }
            sqlite3_step(prepared);
            require(sqlite3_reset(prepared));
        }
    }

private:
    static int bind(sqlite3_stmt* statement, int position, const RawCell& cell)
    {
        switch (cell.type) {
        case CellType::NONE:
            return sqlite3_bind_null(statement, position);
        case CellType::INTEGER:
            return sqlite3_bind_int64(statement, position, std::stoll(cell.bytes));
        default:
            return sqlite3_bind_text64(statement, position, cell.bytes.data(), cell.bytes.size(),
                                       SQLITE_STATIC, SQLITE_UTF8);
        }
    }

    void require(int code) const
    {
        if (code != SQLITE_OK) {
            throw RefusedReplacement(
                formatted("{}: cannot be written: {}", m_path, sqlite3_errmsg(m_db.get())));
        }
    }

    std::string m_path;
    std::unique_ptr<sqlite3, decltype(&sqlite3_close)> m_db{nullptr, sqlite3_close};
};

}  // namespace

void writeStored(const std::string& path, const StoredFile& content, std::int32_t release)
{
    constexpr bool GIVES_IDS = true;
    Writer writer(path);
    writer.run(SETTINGS);
    writer.run(formatted("BEGIN; PRAGMA user_version={};{}", release, SCHEMA));
    writer.insert(faultTypeModel(), content.faultTypes, !GIVES_IDS);
    writer.insert(descriptionsModel(), content.texts, GIVES_IDS);
    writer.run("COMMIT");
}
