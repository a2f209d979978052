#include "Reader.h"
#include "sqliteConnection.h"

namespace {

/// What everything is compared with: the table interface, which the service stands on, with nothing
/// done with its result.
class TableReader : public SqlReader {
public:
    explicit TableReader(SqliteConnection db) : m_db(std::move(db)) {}

private:
    std::size_t readFaultTypes(const std::string& sql) override { return read(sql); }
    std::size_t readDescriptions(const std::string& sql) override { return read(sql); }

    std::size_t read(const std::string& sql)
    {
        char** result = nullptr;
        int rows = 0;
        check(sqlite3_get_table(m_db.get(), sql.c_str(), &result, &rows, nullptr, nullptr),
              m_db.get());
        sqlite3_free_table(result);
        return static_cast<std::size_t>(rows);
    }

    SqliteConnection m_db;
};

}  // namespace

std::unique_ptr<Reader> openTable(const std::string& file)
{
    return std::make_unique<TableReader>(openConnection(file));
}

std::unique_ptr<Reader> openUnlockedTable(const std::string& file)
{
    return std::make_unique<TableReader>(openConnection(file, SQLITE_OPEN_NOMUTEX));
}
