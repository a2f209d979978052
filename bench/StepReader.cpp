#include "Reader.h"
#include "sqliteConnection.h"
#include "zav/Descriptions.h"
#include "zav/FaultTypeDef.h"

namespace {

using Statement = std::unique_ptr<sqlite3_stmt, decltype(&sqlite3_finalize)>;

template <class Number>
void read(const Statement& row, int column, Number& number)
{
    number = static_cast<Number>(sqlite3_column_int64(row.get(), column));
}

void read(const Statement& row, int column, std::string& text)
{
    const unsigned char* const bytes = sqlite3_column_text(row.get(), column);
    if (bytes == nullptr) {
        text = "n/a";
    } else {
        text.assign(reinterpret_cast<const char*>(bytes),
                    static_cast<std::size_t>(sqlite3_column_bytes(row.get(), column)));
    }
}

void read(const Statement& row, FaultTypeDef& record)
{
    read(row, 0, record.code);
    read(row, 1, record.alias);
    read(row, 2, record.type);
    read(row, 3, record.bug);
    read(row, 4, record.clear_after_cycle_nr);
}

void read(const Statement& row, Descriptions& record)
{
    read(row, 0, record.id);
    read(row, 1, record.id_fault_type);
    read(row, 2, record.id_language);
    read(row, 3, record.name);
    read(row, 4, record.short_description);
    read(row, 5, record.description);
    read(row, 6, record.comment);
    read(row, 7, record.remedy);
}

/// What one would write by hand: a statement stepped through, its values read by their types
/// straight into the records, the columns by their positions.
class StepReader : public SqlReader {
public:
    explicit StepReader(const std::string& file) : m_db(openConnection(file)) {}

private:
    std::size_t readFaultTypes(const std::string& sql) override
    {
        return readAll<FaultTypeDef>(sql);
    }
    std::size_t readDescriptions(const std::string& sql) override
    {
        return readAll<Descriptions>(sql);
    }

    template <class Record>
    std::size_t readAll(const std::string& sql)
    {
        sqlite3_stmt* prepared = nullptr;
        check(sqlite3_prepare_v2(m_db.get(), sql.c_str(), -1, &prepared, nullptr), m_db.get());
        const Statement statement(prepared, sqlite3_finalize);
        std::vector<Record> records;
        while (sqlite3_step(statement.get()) == SQLITE_ROW) {
            records.emplace_back();
            read(statement, records.back());
        }
        check(sqlite3_reset(statement.get()), m_db.get());
        return records.size();
    }

    SqliteConnection m_db;
};

}  // namespace

std::unique_ptr<Reader> openStep(const std::string& file)
{
    return std::make_unique<StepReader>(file);
}
