// Writes a fault type as docs/extending.md shows, and reads it back: writeRecord FILE

#include <sqlite3.h>

#include <iostream>

#include "zav/FaultTypeDef.h"
#include "zav/Sqlite3Db.h"
#include "zav/ZavSqlFaultTypeDefTbl.h"

namespace {

int write(Sqlite3Db& db, ZavSqlFaultTypeDefTbl& table, const FaultTypeDef& record)
{
#include "write.inc"
    return code;
}

}  // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        return 2;
    }
    Sqlite3Db db(0);
    ZavSqlFaultTypeDefTbl table("fault_type_definition");
    FaultTypeDef record;
    record.alias = "DRV_OVERTEMP";
    std::vector<FaultTypeDef> found;
    const bool written = db.openDb(argv[1], false) == 0 && write(db, table, record) == 0 &&
                         db.getTbl("SELECT * FROM fault_type_definition", found, &table) == 1 &&
                         found.front().alias == record.alias;
    table.tableName = "no_such_table";
    return written && write(db, table, record) != 0 ? 0 : 1;
}
