#include <SQLiteCpp/SQLiteCpp.h>

#include "Reader.h"
#include "zav/Descriptions.h"
#include "zav/FaultTypeDef.h"

namespace {

std::string textOf(const SQLite::Column& column)
{
    return column.isNull() ? "n/a" : column.getString();
}

template <class Number>
Number numberOf(const SQLite::Column& column)
{
    return static_cast<Number>(column.getInt64());
}

void read(SQLite::Statement& row, FaultTypeDef& record)
{
    record.code = numberOf<std::uint32_t>(row.getColumn(0));
    record.alias = textOf(row.getColumn(1));
    record.type = textOf(row.getColumn(2));
    record.bug = numberOf<std::uint32_t>(row.getColumn(3));
    record.clear_after_cycle_nr = numberOf<std::uint16_t>(row.getColumn(4));
}

void read(SQLite::Statement& row, Descriptions& record)
{
    record.id = numberOf<std::uint16_t>(row.getColumn(0));
    record.id_fault_type = numberOf<std::uint16_t>(row.getColumn(1));
    record.id_language = numberOf<std::uint16_t>(row.getColumn(2));
    record.name = textOf(row.getColumn(3));
    record.short_description = textOf(row.getColumn(4));
    record.description = textOf(row.getColumn(5));
    record.comment = textOf(row.getColumn(6));
    record.remedy = textOf(row.getColumn(7));
}

class SqliteCppReader : public SqlReader {
public:
    explicit SqliteCppReader(const std::string& file) : m_db(file, SQLite::OPEN_READONLY)
    {
        m_db.exec(PAGE_CACHE_SQL);
    }

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
        SQLite::Statement statement(m_db, sql);
        std::vector<Record> records;
        while (statement.executeStep()) {
            records.emplace_back();
            read(statement, records.back());
        }
        return records.size();
    }

    SQLite::Database m_db;
};

}  // namespace

std::unique_ptr<Reader> openSqliteCpp(const std::string& file)
{
    return std::make_unique<SqliteCppReader>(file);
}
