#include "valueColumns.h"
#include "text/formatted.h"

/// A text is found by fault type and language.
std::vector<TableModel::Column> valueColumns(const TableModel& table)
{
    std::vector<TableModel::Column> columns;
    for (const TableModel::Column& column : table.columns) {
        if (!column.isKey || column.name == table.filterColumn().name) {
            columns.push_back(column);
        }
    }
    return columns;
}

std::string valueQuery(const TableModel& table)
{
    std::string columns;
    for (const TableModel::Column& column : valueColumns(table)) {
        // With the table's name: by itself, SQLite takes a name in quotes that it does not know for
        // a text.
        columns +=
            formatted(R"({}"{}"."{}")", columns.empty() ? "" : ", ", table.name, column.name);
    }
    return formatted(R"(SELECT {} FROM "{}")", columns, table.name);
}
