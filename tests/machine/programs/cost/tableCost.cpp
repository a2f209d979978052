// What reading costs over sqlite3_get_table.

#include <cstddef>
#include <cstdlib>

#include "SqlReader.h"

namespace {

struct TableRow {
    char** cells;

    unsigned long number(int column) const
    {
        return cells[column] != nullptr ? std::strtoul(cells[column], nullptr, 10) : 0;
    }
    const char* text(int column) const { return cells[column] != nullptr ? cells[column] : "n/a"; }
};

class TableReader : public SqlReader {
protected:
    std::size_t read(const char* sql, std::vector<OwnFaultType>& records) override
    {
        return readTable(sql, records);
    }
    std::size_t read(const char* sql, std::vector<OwnTexts>& records) override
    {
        return readTable(sql, records);
    }

private:
    template <class Record>
    std::size_t readTable(const char* sql, std::vector<Record>& records)
    {
        char** cells = nullptr;
        int rows = 0;
        int columns = 0;
        if (sqlite3_get_table(m_db, sql, &cells, &rows, &columns, nullptr) == SQLITE_OK) {
            records.resize(static_cast<std::size_t>(rows));
            char** row = cells;
            for (Record& record : records) {
                row += columns;  // the first one holds the names
                fill(record, TableRow{row});
            }
        }
        sqlite3_free_table(cells);
        return records.size();
    }
};

}  // namespace

int main(int argc, char** argv)
{
    TableReader reader;
    return countCost(reader, argc, argv);
}
