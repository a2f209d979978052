#include "zav/ZavSqlDescriptionsTbl.h"

#include <iterator>

#include "ColumnBinding.h"

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
    const ColumnBinding<Descriptions> bindings[] = {
        {"id", "INTEGER PRIMARY KEY AUTOINCREMENT NOT NULL", VALUE_TYPE_UINT16, &record.id},
        {"id_fault_type", "INTEGER", VALUE_TYPE_UINT16, &record.id_fault_type},
        {"id_language", "INTEGER", VALUE_TYPE_UINT16, &record.id_language},
        {"name", "VARCHAR", VALUE_TYPE_STRING, &record.name},
        {"short_description", "VARCHAR", VALUE_TYPE_STRING, &record.short_description},
        {"description", "VARCHAR", VALUE_TYPE_STRING, &record.description},
        {"comment", "VARCHAR", VALUE_TYPE_STRING, &record.comment},
        {"remedy", "VARCHAR", VALUE_TYPE_STRING, &record.remedy},
    };
    columns = std::vector<column_t>(std::begin(bindings), std::end(bindings));
}
