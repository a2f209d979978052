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
Table::Cell cellOf(const Column<Record>& column)
{
    switch (column.valueType) {
    case SqlTbl<Record>::VALUE_TYPE_UINT16:
        return *static_cast<const unsigned short*>(column.pValue);
    case SqlTbl<Record>::VALUE_TYPE_UINT32:
        return *static_cast<const unsigned int*>(column.pValue);
    default:
        return *static_cast<const std::string*>(column.pValue);
    }
}

template <class Record>
Table tableOfRecords(const std::vector<Record>& records)
{
    LibraryTable<Record> model;
    Table table;
    for (const Column<Record>& column : model.columns) {
        table.columns.push_back(
            {column.name, isNumber<Record>(column) ? Table::Kind::NUMBER : Table::Kind::TEXT});
    }
    table.rows.reserve(records.size());
    for (const Record& record : records) {
        model.record = record;
        Table::Row& row = table.rows.emplace_back();
        for (const Column<Record>& column : model.columns) {
            row.push_back(cellOf<Record>(column));
        }
    }
    return table;
}

}  // namespace

Table tableOf(const std::vector<FaultTypeDef>& records)
{
    return tableOfRecords(records);
}

Table tableOf(const std::vector<Descriptions>& records)
{
    return tableOfRecords(records);
}
