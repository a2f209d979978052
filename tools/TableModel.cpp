#include "TableModel.h"

#include <algorithm>
#include <stdexcept>

namespace {

template <class Record>
unsigned bitsOf(const typename SqlTbl<Record>::column_t& column)
{
    switch (column.valueType) {
    case SqlTbl<Record>::VALUE_TYPE_UINT16:
        return 16;
    case SqlTbl<Record>::VALUE_TYPE_UINT32:
        return 32;
    default:
        return 0;
    }
}

template <class Record>
std::vector<TableModel::Column> columnsOf(const SqlTbl<Record>& table)
{
    std::vector<TableModel::Column> columns;
    for (const auto& column : table.columns) {
        columns.push_back({column.name, column.sqlType, bitsOf<Record>(column),
                           sqlTblUtil::isKey(column.sqlType)});
    }
    return columns;
}

}  // namespace

const TableModel::Column& TableModel::column(const std::string& columnName) const
{
    const auto found = std::find_if(columns.begin(), columns.end(), [&](const Column& candidate) {
        return candidate.name == columnName;
    });
    if (found == columns.end()) {
        throw std::out_of_range("no column " + columnName);
    }
    return *found;
}

TableModel faultTypeModel()
{
    const ZavSqlFaultTypeDefTbl table("fault_type_definition");
    return {table.tableName, columnsOf(table), "getFaultTypeDef()", " LIKE ", 0};
}

TableModel descriptionsModel()
{
    const ZavSqlDescriptionsTbl table("descriptions");
    return {table.tableName, columnsOf(table), "getDescriptionsByFC()", "=", 1};
}
