#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/CoutCapture.h"
#include "support/SampleTbl.h"
#include "support/TempDir.h"
#include "support/database.h"
#include "support/records.h"
#include "support/reporterLines.h"
#include "table/statementTests.h"
#include "zav/Sqlite3Db.h"
#include "zav/ZavSqlDescriptionsTbl.h"
#include "zav/ZavSqlFaultTypeDefTbl.h"

namespace {

std::string nullWarning(const std::string& column)
{
    return warningLine("value nullptr in column " + column);
}

struct Insert {
    static std::string of(const SampleTbl& table) { return table.getSqlInsertValues(); }
    static std::string query(SampleTbl& table, const Sample& record)
    {
        return table.getSqlInsertValuesQuery(record);
    }
};

INSTANTIATE_TYPED_TEST_SUITE_P(SqlTblInsert, FailingStatement, Insert, );

TEST(SqlTblInsert, OfAFaultTypeDef)
{
    ZavSqlFaultTypeDefTbl table("fault_type_definition");
    EXPECT_EQ(table.getSqlInsertValuesQuery(makeFaultTypeDef(12, "E012", "error", 0, 3)),
              "INSERT INTO fault_type_definition('code','alias','type','bug',"
              "'clear_after_cycle_nr') VALUES(null,'E012','error',0,3)");
}

TEST(SqlTblInsert, OfADescriptions)
{
    ZavSqlDescriptionsTbl table("descriptions");
    EXPECT_EQ(table.getSqlInsertValuesQuery(
                  makeDescriptions(7, 12, 2, "Overheat", "Too hot", "", "", "Cool down")),
              "INSERT INTO descriptions('id','id_fault_type','id_language','name',"
              "'short_description','description','comment','remedy') "
              "VALUES(null,12,2,'Overheat','Too hot','','','Cool down')");
}

TEST(SqlTblInsert, OfTheWorkingRecordAsItStands)
{
    ZavSqlFaultTypeDefTbl table("fault_type_definition");
    EXPECT_EQ(table.getSqlInsertValues(),
              "INSERT INTO fault_type_definition('code','alias','type','bug',"
              "'clear_after_cycle_nr') VALUES(null,'','',0,0)");
    table.record = makeFaultTypeDef(4294967295, "a", "b", 4294967295, 65535);
    EXPECT_EQ(table.getSqlInsertValues(),
              "INSERT INTO fault_type_definition('code','alias','type','bug',"
              "'clear_after_cycle_nr') VALUES(null,'a','b',4294967295,65535)");
}

TEST(SqlTblInsert, QueryLeavesTheLastRecordInTheTable)
{
    ZavSqlDescriptionsTbl table("descriptions");
    const Descriptions first = makeDescriptions(1, 2, 3, "n1", "s1", "d1", "c1", "r1");
    const Descriptions second = makeDescriptions(4, 5, 6, "n2", "s2", "d2", "c2", "r2");
    const std::string start =
        "INSERT INTO descriptions('id','id_fault_type','id_language','name','short_description',"
        "'description','comment','remedy') VALUES(null,";
    EXPECT_EQ(table.getSqlInsertValuesQuery(first), start + "2,3,'n1','s1','d1','c1','r1')");
    EXPECT_EQ(table.getSqlInsertValuesQuery(second), start + "5,6,'n2','s2','d2','c2','r2')");
    EXPECT_EQ(fieldsOf(table.record), fieldsOf(second));
    EXPECT_EQ(table.getSqlInsertValues(), start + "5,6,'n2','s2','d2','c2','r2')");
}

TEST(SqlTblInsert, LeavesTheTableAsItWas)
{
    ZavSqlFaultTypeDefTbl table("fault_type_definition");
    table.record = makeFaultTypeDef(12, "E012", "error", 0, 3);
    const std::vector<ColumnFields> columns = columnsOf(table);
    table.getSqlInsertValues();
    EXPECT_EQ(fieldsOf(table.record), fieldsOf(makeFaultTypeDef(12, "E012", "error", 0, 3)));
    EXPECT_EQ(columnsOf(table), columns);
    EXPECT_EQ(table.tableName, "fault_type_definition");
}

TEST(SqlTblInsert, ListsTheKeyWhereverItStands)
{
    SampleTbl table;
    table.record.narrow = 5;
    const SampleTbl::column_t key("id", KEY, SampleTbl::VALUE_TYPE_UINT32, &table.record.number);
    const SampleTbl::column_t narrow("n", INTEGER, SampleTbl::VALUE_TYPE_UINT16,
                                     &table.record.narrow);
    table.columns = {key};
    EXPECT_EQ(table.getSqlInsertValues(), "INSERT INTO sample('id') VALUES(null)");
    table.columns = {key, narrow};
    EXPECT_EQ(table.getSqlInsertValues(), "INSERT INTO sample('id','n') VALUES(null,5)");
    table.columns = {narrow, key, narrow};
    EXPECT_EQ(table.getSqlInsertValues(), "INSERT INTO sample('n','id','n') VALUES(5,null,5)");
    table.columns = {narrow, key};
    EXPECT_EQ(table.getSqlInsertValues(), "INSERT INTO sample('n','id') VALUES(5,null)");
    table.columns = {key, key};
    EXPECT_EQ(table.getSqlInsertValues(), "INSERT INTO sample('id','id') VALUES(null,null)");
}

TEST(SqlTblInsert, OnlyTheLastSeparatorIsErased)
{
    SampleTbl table;
    table.record.text = "a,b,";
    table.columns = {{"x,", VARCHAR, SampleTbl::VALUE_TYPE_STRING, &table.record.text},
                     {"y,z", VARCHAR, SampleTbl::VALUE_TYPE_STRING, &table.record.text}};
    EXPECT_EQ(table.getSqlInsertValues(), "INSERT INTO sample('x,','y,z') VALUES('a,b,','a,b,')");
}

TEST(SqlTblInsert, NamesAreTakenAsTheyAre)
{
    SampleTbl table;
    table.tableName = "my \"table\"";
    table.columns = {{"it's", INTEGER, SampleTbl::VALUE_TYPE_UINT16, &table.record.narrow},
                     {"", INTEGER, SampleTbl::VALUE_TYPE_UINT16, &table.record.narrow}};
    EXPECT_EQ(table.getSqlInsertValues(), "INSERT INTO my \"table\"('it's','') VALUES(0,0)");
}

TEST(SqlTblInsert, EmptyValueTextsLeaveAdjacentCommas)
{
    SampleTbl table;
    const SampleTbl::column_t empty("e", INTEGER, SampleTbl::VALUE_TYPE_STRING, &table.record.text);
    table.columns = {empty, empty, empty};
    EXPECT_EQ(table.getSqlInsertValues(), "INSERT INTO sample('e','e','e') VALUES(,,)");
}

TEST(SqlTblInsert, EachColumnWithoutBindingIsWarnedAboutOncePerCall)
{
    SampleTbl table;
    table.columns = {{"id", KEY, SampleTbl::VALUE_TYPE_UINT32, nullptr},
                     {"bound", INTEGER, SampleTbl::VALUE_TYPE_UINT16, &table.record.narrow},
                     {"text", VARCHAR, SampleTbl::VALUE_TYPE_STRING, nullptr},
                     {"number", INTEGER, SampleTbl::VALUE_TYPE_UINT16, nullptr},
                     {"placeholder", "", SampleTbl::VALUE_TYPE_NONE, nullptr}};
    const std::string warnings = nullWarning("id") + nullWarning("text") + nullWarning("number") +
                                 nullWarning("placeholder");
    const CoutCapture capture;
    EXPECT_EQ(table.getSqlInsertValues(),
              "INSERT INTO sample('id','bound','text','number','placeholder') "
              "VALUES(null,0,'null',0,)");
    EXPECT_EQ(capture.text(), warnings);
    table.getSqlInsertValuesQuery(Sample());
    EXPECT_EQ(capture.text(), warnings + warnings);
}

TEST(SqlTblInsert, FollowsTheColumnsOfTheLastQuery)
{
    ZavSqlFaultTypeDefTbl table("fault_type_definition");
    table.reorderColumns({"bug", "severity", "code"});
    const CoutCapture capture;
    EXPECT_EQ(table.getSqlInsertValuesQuery(makeFaultTypeDef(12, "E012", "error", 9, 3)),
              "INSERT INTO fault_type_definition('bug','severity','code') VALUES(9,,null)");
    EXPECT_EQ(capture.text(), nullWarning("severity"));
}

TEST(SqlTblInsert, AddsTheRecordToADatabaseUnderANewKey)
{
    const TempDir folder;
    const std::string file = makeDatabase(folder.file("faults.db"));
    ZavSqlFaultTypeDefTbl table("fault_type_definition");
    runSql(file, table.getSqlInsertValuesQuery(makeFaultTypeDef(12, "a,b", "", 4294967295, 65535)));

    Sqlite3Db db(0);
    ASSERT_EQ(db.openDb(file, true), 0);
    std::vector<FaultTypeDef> records;
    ASSERT_EQ(db.getTbl("SELECT * FROM fault_type_definition", records, &table), 1);
    EXPECT_EQ(fieldsOf(records[0]), fieldsOf(makeFaultTypeDef(1, "a,b", "", 4294967295, 65535)));
}

}  // namespace
