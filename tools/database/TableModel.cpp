#include "TableModel.h"

#include <algorithm>

#include "LibraryTable.h"
#include "text/formatted.h"
#include "zav/detail/tableParts.h"

namespace {

template <class Record>
FieldKind kindOf(const typename SqlTbl<Record>::column_t& column)
{
    switch (column.valueType) {
    case SqlTbl<Record>::VALUE_TYPE_UINT16:
        return FieldKind::NUMBER_16;
    case SqlTbl<Record>::VALUE_TYPE_UINT32:
        return FieldKind::NUMBER_32;
    default:
        return FieldKind::TEXT;
    }
}

template <class Record>
std::vector<TableModel::Column> columnsOf(const SqlTbl<Record>& table)
{
    std::vector<TableModel::Column> columns;
    for (const auto& column : table.columns) {
        columns.push_back({column.name, column.sqlType, kindOf<Record>(column),
                           sqlTblUtil::isKey(column.sqlType)});
    }
    return columns;
}

/// @param matches  one of the columns.
template <class Columns, class Predicate>
const auto& columnWhere(const Columns& columns, const Predicate& matches)
{
    return *std::find_if(columns.begin(), columns.end(), matches);
}

/// @return the name of the column that is bound to a field of the table's record.
template <class Record>
std::string nameOf(const SqlTbl<Record>& table, const void* field)
{
    return columnWhere(table.columns,
                       [field](const auto& column) { return column.pValue == field; })
        .name;
}

}  // namespace

std::vector<std::string> TableModel::columnNames() const
{
    std::vector<std::string> names;
    for (const Column& column : columns) {
        names.push_back(column.name);
    }
    return names;
}

std::size_t TableModel::positionOf(const std::string& columnName) const
{
    const Column& found =
        columnWhere(columns, [&](const Column& each) { return each.name == columnName; });
    return static_cast<std::size_t>(&found - columns.data());
}

std::string TableModel::lookupBy(const std::string& columnName, const std::string& value) const
{
    return formatted(R"(SELECT * FROM "{}" WHERE {}{}{})", name, columnName, comparison, value);
}

TableModel faultTypeModel()
{
    const LibraryTable<FaultTypeDef> table;
    return {table.tableName, columnsOf(table), "getFaultTypeDef()", tables::COMPARES_CODE, 0};
}

TableModel descriptionsModel()
{
    const LibraryTable<Descriptions> table;
    return {table.tableName, columnsOf(table), "getDescriptionsByFC()", tables::COMPARES_FAULT_TYPE,
            1};
}

FaultTypeColumns faultTypeColumns()
{
    const LibraryTable<FaultTypeDef> table;
    return {nameOf(table, &table.record.code), nameOf(table, &table.record.alias),
            nameOf(table, &table.record.type)};
}

DescriptionsColumns descriptionsColumns()
{
    const LibraryTable<Descriptions> table;
    return {nameOf(table, &table.record.id_fault_type), nameOf(table, &table.record.id_language),
            nameOf(table, &table.record.name), nameOf(table, &table.record.short_description),
            nameOf(table, &table.record.description)};
}
