#include "chosenColumns.h"

#include <algorithm>

TableView chosenColumns(const TableView& table, const std::vector<std::string>& names)
{
    if (names.empty()) {
        return table;
    }
    TableView chosen;
    std::vector<std::size_t> positions;
    for (const std::string& name : names) {
        const auto found =
            std::find_if(table.columns.begin(), table.columns.end(),
                         [&](const Table::Column& column) { return column.name == name; });
        if (found != table.columns.end()) {
            chosen.columns.push_back(*found);
            positions.push_back(static_cast<std::size_t>(found - table.columns.begin()));
        }
    }
    chosen.forEachRow = [forEachRow = table.forEachRow, positions](const TableView::TakeRow& take) {
        TableView::Row cells;
        forEachRow([&](const TableView::Row& row) {
            cells.clear();
            for (const std::size_t position : positions) {
                cells.push_back(row[position]);
            }
            take(cells);
        });
    };
    return chosen;
}
