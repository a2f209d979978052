#include "TableModel.h"

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
