#include "recordTables.h"

#include "database/LibraryTable.h"

namespace {

template <class Record>
using Column = typename SqlTbl<Record>::column_t;

template <class Record>
bool isNumber(const Column<Record>& column)
{
    return column.valueType != SqlTbl<Record>::VALUE_TYPE_STRING;
}

/// What the table's working record holds in the field of a column.
template <class Record>
TableView::Cell cellOf(const Column<Record>& column)
{
    switch (column.valueType) {
    case SqlTbl<Record>::VALUE_TYPE_UINT16:
        return std::uint64_t{*static_cast<const unsigned short*>(column.pValue)};
    case SqlTbl<Record>::VALUE_TYPE_UINT32:
        return std::uint64_t{*static_cast<const unsigned int*>(column.pValue)};
    default:
        return std::string_view(*static_cast<const std::string*>(column.pValue));
    }
}

template <class Record>
TableView viewOfRecords(const std::vector<Record>& records)
{
    TableView table;
    for (const Column<Record>& column : LibraryTable<Record>().columns) {
        table.columns.push_back(
            {column.name, isNumber<Record>(column) ? Table::Kind::NUMBER : Table::Kind::TEXT});
    }
    table.forEachRow = [&records](const TableView::TakeRow& take) {
        LibraryTable<Record> model;
        TableView::Row row;
        for (const Record& record : records) {
            model.record = record;
            row.clear();
            for (const Column<Record>& column : model.columns) {
                row.push_back(cellOf<Record>(column));
            }
            take(row);
        }
    };
    return table;
}

}  // namespace

TableView viewOf(const std::vector<FaultTypeDef>& records)
{
    return viewOfRecords(records);
}

TableView viewOf(const std::vector<Descriptions>& records)
{
    return viewOfRecords(records);
}
