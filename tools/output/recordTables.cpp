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

/// A field of a record, by its place in it.
struct Field {
    std::ptrdiff_t offset;
    unsigned int valueType;
};

const char* bytesOf(const void* object)
{
    return static_cast<const char*>(object);
}

/// The fields in the order of the columns, each of which is bound to the table's working record.
template <class Record>
std::vector<Field> fieldsOf(const LibraryTable<Record>& model)
{
    std::vector<Field> fields;
    for (const Column<Record>& column : model.columns) {
        fields.push_back({bytesOf(column.pValue) - bytesOf(&model.record), column.valueType});
    }
    return fields;
}

template <class Record>
TableView::Cell cellOf(const Record& record, const Field& field)
{
    const void* value = bytesOf(&record) + field.offset;
    switch (field.valueType) {
    case SqlTbl<Record>::VALUE_TYPE_UINT16:
        return std::uint64_t{*static_cast<const unsigned short*>(value)};
    case SqlTbl<Record>::VALUE_TYPE_UINT32:
        return std::uint64_t{*static_cast<const unsigned int*>(value)};
    default:
        return std::string_view(*static_cast<const std::string*>(value));
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
        const std::vector<Field> fields = fieldsOf(LibraryTable<Record>());
        TableView::Row row;
        for (const Record& record : records) {
            row.clear();
            for (const Field& field : fields) {
                row.push_back(cellOf(record, field));
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
