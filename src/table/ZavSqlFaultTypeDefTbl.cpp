#include "zav/ZavSqlFaultTypeDefTbl.h"

#include <utility>

template class SqlTbl<FaultTypeDef>;

ZavSqlFaultTypeDefTbl::ZavSqlFaultTypeDefTbl(const std::string& name) : SqlTbl<FaultTypeDef>(name)
{
    ZavSqlFaultTypeDefTbl::init("");
}

void ZavSqlFaultTypeDefTbl::init(const std::string& /*name*/)
{
    if (!columns.empty()) {
        return;
    }
    std::vector<column_t> complete;
    complete.reserve(5);
    // One call for each, and a column made before it is moved in: a single list of them all comes
    // to three times the code.
    const auto add = [&complete](const char* columnName, const char* sqlType,
                                 columnValueType_t valueType, void* field) {
        column_t column(columnName, sqlType, valueType, field);
        complete.push_back(std::move(column));
    };
    add("code", "INTEGER PRIMARY KEY AUTOINCREMENT NOT NULL", VALUE_TYPE_UINT32, &record.code);
    add("alias", "VARCHAR", VALUE_TYPE_STRING, &record.alias);
    add("type", "VARCHAR", VALUE_TYPE_STRING, &record.type);
    add("bug", "INTEGER", VALUE_TYPE_UINT32, &record.bug);
    add("clear_after_cycle_nr", "INTEGER", VALUE_TYPE_UINT16, &record.clear_after_cycle_nr);
    columns.swap(complete);  // last: a failed allocation leaves the list empty
}
