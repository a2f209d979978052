#include "zav/ZavSqlDescriptionsTbl.h"

#include <utility>

template class SqlTbl<Descriptions>;

ZavSqlDescriptionsTbl::ZavSqlDescriptionsTbl(const std::string& name) : SqlTbl<Descriptions>(name)
{
    ZavSqlDescriptionsTbl::init("");
}

void ZavSqlDescriptionsTbl::init(const std::string& /*name*/)
{
    if (!columns.empty()) {
        return;
    }
    std::vector<column_t> complete;
    complete.reserve(8);
    // One call for each, and a column made before it is moved in: a single list of them all comes
    // to three times the code.
    const auto add = [&complete](const char* columnName, const char* sqlType,
                                 columnValueType_t valueType, void* field) {
        column_t column(columnName, sqlType, valueType, field);
        complete.push_back(std::move(column));
    };
    add("id", "INTEGER PRIMARY KEY AUTOINCREMENT NOT NULL", VALUE_TYPE_UINT16, &record.id);
    add("id_fault_type", "INTEGER", VALUE_TYPE_UINT16, &record.id_fault_type);
    add("id_language", "INTEGER", VALUE_TYPE_UINT16, &record.id_language);
    add("name", "VARCHAR", VALUE_TYPE_STRING, &record.name);
    add("short_description", "VARCHAR", VALUE_TYPE_STRING, &record.short_description);
    add("description", "VARCHAR", VALUE_TYPE_STRING, &record.description);
    add("comment", "VARCHAR", VALUE_TYPE_STRING, &record.comment);
    add("remedy", "VARCHAR", VALUE_TYPE_STRING, &record.remedy);
    columns.swap(complete);  // last: a failed allocation leaves the list empty
}
