// Any bytes as a database file: opened, asked every kind of question, closed.

#include <iostream>
#include <string>
#include <vector>

#include "expect.h"
#include "support/TempDir.h"
#include "support/database.h"
#include "target.h"
#include "zav/Descriptions.h"
#include "zav/FaultTypeDef.h"
#include "zav/Sqlite3Db.h"
#include "zav/ZavSqlDescriptionsTbl.h"
#include "zav/ZavSqlFaultTypeDefTbl.h"

namespace {

template <class Record, class Table>
void ask(Sqlite3Db& db, Table& table, const std::string& condition)
{
    std::vector<Record> records(3);
    const int result =
        db.getTbl("SELECT * FROM \"" + table.tableName + "\"" + condition, records, &table);
    expect(result >= 0 || result == -2, "a count, or a failed query");
    expect(records.size() == (result >= 0 ? static_cast<std::size_t>(result) : 3U),
           "as many records as counted, the list untouched after a failure");
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    std::cout.setstate(std::ios_base::badbit);  // no lines: they are not what is tried
    static const TempDir dir;
    static const std::string input = dir.file("input.db");
    const std::string bytes(data, data + size);
    setContents(input, bytes);

    Sqlite3Db db(0);
    expect(db.openDb(input, true) == 0, "any file opens");
    ZavSqlFaultTypeDefTbl faultTypes("fault_type_definition");
    ZavSqlDescriptionsTbl descriptions("descriptions");
    ask<FaultTypeDef>(db, faultTypes, "");
    ask<FaultTypeDef>(db, faultTypes, " WHERE code LIKE 17");
    ask<Descriptions>(db, descriptions, "");
    ask<Descriptions>(db, descriptions, " WHERE id_fault_type=17");
    expect(db.closeDb() == 0, "the database closes");
    expect(contents(input) == bytes, "the file is as it was");
    return 0;
}
