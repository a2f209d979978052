#include "zav/ZavSqlFaultTypeDefTbl.h"

#include <iterator>

#include "ColumnBinding.h"

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
    const ColumnBinding<FaultTypeDef> bindings[] = {
        {"code", "INTEGER PRIMARY KEY AUTOINCREMENT NOT NULL", VALUE_TYPE_UINT32, &record.code},
        {"alias", "VARCHAR", VALUE_TYPE_STRING, &record.alias},
        {"type", "VARCHAR", VALUE_TYPE_STRING, &record.type},
        {"bug", "INTEGER", VALUE_TYPE_UINT32, &record.bug},
        {"clear_after_cycle_nr", "INTEGER", VALUE_TYPE_UINT16, &record.clear_after_cycle_nr},
    };
    columns = std::vector<column_t>(std::begin(bindings), std::end(bindings));
}
