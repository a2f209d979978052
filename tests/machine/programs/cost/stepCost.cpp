// What reading costs over sqlite3_step.

#include "SqlReader.h"

namespace {

struct StepRow {
    sqlite3_stmt* statement;

    sqlite3_int64 number(int column) const { return sqlite3_column_int64(statement, column); }
    const char* text(int column) const
    {
        const auto* const cell = sqlite3_column_text(statement, column);
        return cell != nullptr ? reinterpret_cast<const char*>(cell) : "n/a";
    }
};

class StepReader : public SqlReader {
protected:
    std::size_t read(const char* sql, std::vector<OwnFaultType>& records) override
    {
        return readRows(sql, records);
    }
    std::size_t read(const char* sql, std::vector<OwnTexts>& records) override
    {
        return readRows(sql, records);
    }

private:
    template <class Record>
    std::size_t readRows(const char* sql, std::vector<Record>& records)
    {
        sqlite3_stmt* statement = nullptr;
        sqlite3_prepare_v2(m_db, sql, -1, &statement, nullptr);
        while (sqlite3_step(statement) == SQLITE_ROW) {
            records.emplace_back();
            fill(records.back(), StepRow{statement});
        }
        sqlite3_finalize(statement);
        return records.size();
    }
};

}  // namespace

int main(int argc, char** argv)
{
    StepReader reader;
    return countCost(reader, argc, argv);
}
