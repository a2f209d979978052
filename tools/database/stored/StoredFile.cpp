#include "StoredFile.h"

#include <utility>

#include "readingStored.h"
#include "text/formatted.h"
#include "valueColumns.h"

namespace {

std::vector<StoredRow> readTable(const RawDatabase& database, const TableModel& table)
{
    std::string order;
    for (std::size_t i = 1; i <= valueColumns(table).size(); ++i) {
        order += formatted("{}{}", order.empty() ? " ORDER BY " : ", ", i);
    }
    std::vector<StoredRow> rows;
    database.read(valueQuery(table) + order, [&](const RawRow& row) {
        StoredRow cells;
        for (int i = 0; i < row.columnCount(); ++i) {
            cells.emplace_back(row.cell(i));
        }
        rows.push_back(std::move(cells));
    });
    return rows;
}

}  // namespace

StoredFile readStored(const Database& database)
{
    return readingStored(database, [](const RawDatabase& raw) {
        return StoredFile{readTable(raw, faultTypeModel()), readTable(raw, descriptionsModel())};
    });
}
