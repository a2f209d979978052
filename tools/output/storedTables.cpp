#include "storedTables.h"
#include "text/formatted.h"

TableView viewOfStored(const RawDatabase& database, const TableModel& model,
                       const std::string& condition)
{
    TableView table;
    std::string names;
    for (const TableModel::Column& column : model.columns) {
        const bool isText = column.kind == FieldKind::TEXT;
        table.columns.push_back({column.name, isText ? Table::Kind::TEXT : Table::Kind::NUMBER});
        // With the table's name: by itself, SQLite takes a name in quotes that it does not know for
        // a text.
        names += formatted(R"({}"{}"."{}")", names.empty() ? "" : ", ", model.name, column.name);
    }
    const std::string query = formatted(R"(SELECT {} FROM "{}"{}{})", names, model.name,
                                        condition.empty() ? "" : " WHERE ", condition);
    table.forEachRow = [&database, query](const TableView::TakeRow& take) {
        TableView::Row cells;
        database.read(query, [&](const RawRow& row) {
            cells.clear();
            for (int i = 0; i < row.columnCount(); ++i) {
                cells.emplace_back(row.cell(i));
            }
            take(cells);
        });
    };
    return table;
}
