#include "zav/ZavSqlFaultTypeDefTbl.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/CoutCapture.h"
#include "support/Row.h"
#include "support/TempDir.h"
#include "support/database.h"
#include "support/records.h"
#include "support/reporterLines.h"
#include "table/concreteTableTests.h"
#include "zav/Sqlite3Db.h"

namespace {

struct FaultTypeDefTraits {
    using Table = ZavSqlFaultTypeDefTbl;
    using Record = FaultTypeDef;
    static constexpr const char* NAME = "fault_type_definition";
    static constexpr const char* SOME_COLUMN = "bug";

    static std::vector<ColumnFields> fullList(const ZavSqlFaultTypeDefTbl& table)
    {
        return {{"code", "INTEGER PRIMARY KEY AUTOINCREMENT NOT NULL", 2, &table.record.code},
                {"alias", "VARCHAR", 4, &table.record.alias},
                {"type", "VARCHAR", 4, &table.record.type},
                {"bug", "INTEGER", 2, &table.record.bug},
                {"clear_after_cycle_nr", "INTEGER", 3, &table.record.clear_after_cycle_nr}};
    }
};

INSTANTIATE_TYPED_TEST_SUITE_P(ZavSqlFaultTypeDefTbl, ConcreteTable, FaultTypeDefTraits, );

TEST(ZavSqlFaultTypeDefTbl, AssigningTheRecordKeepsTheBindings)
{
    ZavSqlFaultTypeDefTbl table("fault_type_definition");
    table.record = makeFaultTypeDef(1, "a text too long for the short string buffer", "", 2, 3);
    EXPECT_EQ(columnsOf(table), FaultTypeDefTraits::fullList(table));
    Row row{"70000", "E012", "error", "7", "65535"};
    EXPECT_EQ(table.setDatafromSqlResult(row.data()), 5);
    EXPECT_EQ(fieldsOf(table.record), fieldsOf(makeFaultTypeDef(70000, "E012", "error", 7, 65535)));
}

TEST(ZavSqlFaultTypeDefTbl, ReadsRowsOfADatabase)
{
    const TempDir folder;
    const std::string file = makeDatabase(
        folder.file("faults.db"),
        "INSERT INTO fault_type_definition VALUES(70000,NULL,'Größe',4294967295,65535);"
        "INSERT INTO fault_type_definition VALUES(70001,'',NULL,NULL,65536);");
    Sqlite3Db db(0);
    ASSERT_EQ(db.openDb(file, true), 0);
    ZavSqlFaultTypeDefTbl table("fault_type_definition");
    std::vector<FaultTypeDef> records;
    const CoutCapture capture;
    ASSERT_EQ(db.getTbl("SELECT * FROM fault_type_definition ORDER BY code", records, &table), 2);
    EXPECT_EQ(fieldsOf(records[0]),
              fieldsOf(makeFaultTypeDef(70000, "n/a", "Größe", 4294967295, 65535)));
    EXPECT_EQ(fieldsOf(records[1]), fieldsOf(makeFaultTypeDef(70001, "", "n/a", 0, 0)));
    EXPECT_EQ(capture.text(), errorLine("casting value \"65536\", typeid=t"));
}

}  // namespace
