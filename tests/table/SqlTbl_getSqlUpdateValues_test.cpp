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

struct Update {
    static std::string of(const SampleTbl& table) { return table.getSqlUpdateValues(); }
    static std::string query(SampleTbl& table, const Sample& record)
    {
        return table.getSqlUpdateValuesQuery(record);
    }
};

INSTANTIATE_TYPED_TEST_SUITE_P(SqlTblUpdate, FailingStatement, Update, );

TEST(SqlTblUpdate, OfAFaultTypeDef)
{
    ZavSqlFaultTypeDefTbl table("fault_type_definition");
    EXPECT_EQ(table.getSqlUpdateValuesQuery(makeFaultTypeDef(12, "E012", "error", 0, 3)),
              "UPDATE fault_type_definition SET 'alias'='E012','type'='error','bug'=0,"
              "'clear_after_cycle_nr'=3");
}

TEST(SqlTblUpdate, OfADescriptions)
{
    ZavSqlDescriptionsTbl table("descriptions");
    EXPECT_EQ(table.getSqlUpdateValuesQuery(
                  makeDescriptions(7, 12, 2, "Overheat", "Too hot", "", "", "Cool down")),
              "UPDATE descriptions SET 'id_fault_type'=12,'id_language'=2,'name'='Overheat',"
              "'short_description'='Too hot','description'='','comment'='','remedy'='Cool down'");
}

TEST(SqlTblUpdate, OfTheWorkingRecordAsItStands)
{
    ZavSqlFaultTypeDefTbl table("fault_type_definition");
    EXPECT_EQ(table.getSqlUpdateValues(),
              "UPDATE fault_type_definition SET 'alias'='','type'='','bug'=0,"
              "'clear_after_cycle_nr'=0");
    table.record = makeFaultTypeDef(4294967295, "a", "b", 4294967295, 65535);
    EXPECT_EQ(table.getSqlUpdateValues(),
              "UPDATE fault_type_definition SET 'alias'='a','type'='b','bug'=4294967295,"
              "'clear_after_cycle_nr'=65535");
}

TEST(SqlTblUpdate, QueryLeavesTheLastRecordInTheTable)
{
    ZavSqlFaultTypeDefTbl table("fault_type_definition");
    const FaultTypeDef second = makeFaultTypeDef(2, "a2", "t2", 20, 22);
    EXPECT_EQ(table.getSqlUpdateValuesQuery(makeFaultTypeDef(1, "a1", "t1", 10, 11)),
              "UPDATE fault_type_definition SET 'alias'='a1','type'='t1','bug'=10,"
              "'clear_after_cycle_nr'=11");
    EXPECT_EQ(table.getSqlUpdateValuesQuery(second),
              "UPDATE fault_type_definition SET 'alias'='a2','type'='t2','bug'=20,"
              "'clear_after_cycle_nr'=22");
    EXPECT_EQ(fieldsOf(table.record), fieldsOf(second));
}

TEST(SqlTblUpdate, LeavesTheTableAsItWas)
{
    ZavSqlFaultTypeDefTbl table("fault_type_definition");
    table.record = makeFaultTypeDef(12, "E012", "error", 0, 3);
    const std::vector<ColumnFields> columns = columnsOf(table);
    table.getSqlUpdateValues();
    EXPECT_EQ(fieldsOf(table.record), fieldsOf(makeFaultTypeDef(12, "E012", "error", 0, 3)));
    EXPECT_EQ(columnsOf(table), columns);
    EXPECT_EQ(table.tableName, "fault_type_definition");
}

TEST(SqlTblUpdate, LeavesTheKeyOutWhereverItStands)
{
    SampleTbl table;
    table.record.narrow = 5;
    const SampleTbl::column_t key("id", KEY, SampleTbl::VALUE_TYPE_UINT32, &table.record.number);
    const SampleTbl::column_t narrow("n", INTEGER, SampleTbl::VALUE_TYPE_UINT16,
                                     &table.record.narrow);
    table.columns = {key, narrow};
    EXPECT_EQ(table.getSqlUpdateValues(), "UPDATE sample SET 'n'=5");
    table.columns = {narrow, key, narrow};
    EXPECT_EQ(table.getSqlUpdateValues(), "UPDATE sample SET 'n'=5,'n'=5");
    table.columns = {narrow, key};
    EXPECT_EQ(table.getSqlUpdateValues(), "UPDATE sample SET 'n'=5");
}

TEST(SqlTblUpdate, TableOfKeysAloneIsOutOfRange)
{
    SampleTbl table;
    const SampleTbl::column_t key("id", KEY, SampleTbl::VALUE_TYPE_UINT32, &table.record.number);
    table.columns = {key};
    expectNothingToErase([&] { table.getSqlUpdateValues(); });
    table.columns = {key, key};
    Sample record;
    record.number = 8;
    expectNothingToErase([&] { table.getSqlUpdateValuesQuery(record); });
    EXPECT_EQ(table.record.number, 8U);
}

TEST(SqlTblUpdate, OnlyTheLastSeparatorIsErased)
{
    SampleTbl table;
    table.record.text = "a,b,";
    table.columns = {{"x,", VARCHAR, SampleTbl::VALUE_TYPE_STRING, &table.record.text},
                     {"y,z", VARCHAR, SampleTbl::VALUE_TYPE_STRING, &table.record.text}};
    EXPECT_EQ(table.getSqlUpdateValues(), "UPDATE sample SET 'x,'='a,b,','y,z'='a,b,'");
}

TEST(SqlTblUpdate, NamesAreTakenAsTheyAre)
{
    SampleTbl table;
    table.tableName = "my \"table\"";
    table.columns = {{"it's", INTEGER, SampleTbl::VALUE_TYPE_UINT16, &table.record.narrow},
                     {"", INTEGER, SampleTbl::VALUE_TYPE_UINT16, &table.record.narrow}};
    EXPECT_EQ(table.getSqlUpdateValues(), "UPDATE my \"table\" SET 'it's'=0,''=0");
}

TEST(SqlTblUpdate, EmptyValueTextsLeaveTheNameAlone)
{
    SampleTbl table;
    const SampleTbl::column_t empty("e", INTEGER, SampleTbl::VALUE_TYPE_STRING, &table.record.text);
    table.columns = {empty, empty};
    EXPECT_EQ(table.getSqlUpdateValues(), "UPDATE sample SET 'e'=,'e'=");
}

TEST(SqlTblUpdate, EachColumnWithoutBindingIsWarnedAboutOncePerCall)
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
    EXPECT_EQ(table.getSqlUpdateValues(),
              "UPDATE sample SET 'bound'=0,'text'='null','number'=0,'placeholder'=");
    EXPECT_EQ(capture.text(), warnings);
    table.getSqlUpdateValuesQuery(Sample());
    EXPECT_EQ(capture.text(), warnings + warnings);
}

TEST(SqlTblUpdate, FollowsTheColumnsOfTheLastQuery)
{
    ZavSqlFaultTypeDefTbl table("fault_type_definition");
    table.reorderColumns({"bug", "severity", "code", "alias"});
    const CoutCapture capture;
    EXPECT_EQ(table.getSqlUpdateValuesQuery(makeFaultTypeDef(12, "E012", "error", 9, 3)),
              "UPDATE fault_type_definition SET 'bug'=9,'severity'=,'alias'='E012'");
    EXPECT_EQ(capture.text(), nullWarning("severity"));
}

TEST(SqlTblUpdate, ChangesTheRowsOfADatabaseThatTheCallersConditionPicks)
{
    const TempDir folder;
    const std::string file =
        makeDatabase(folder.file("faults.db"),
                     "INSERT INTO fault_type_definition VALUES(12,'old','old',1,1);"
                     "INSERT INTO fault_type_definition VALUES(13,'other','other',2,2);");
    ZavSqlFaultTypeDefTbl table("fault_type_definition");
    runSql(file, table.getSqlUpdateValuesQuery(makeFaultTypeDef(99, "a,b", "", 4294967295, 65535)) +
                     " WHERE code=12");

    Sqlite3Db db(0);
    ASSERT_EQ(db.openDb(file, true), 0);
    std::vector<FaultTypeDef> records;
    ASSERT_EQ(db.getTbl("SELECT * FROM fault_type_definition ORDER BY code", records, &table), 2);
    EXPECT_EQ(fieldsOf(records[0]), fieldsOf(makeFaultTypeDef(12, "a,b", "", 4294967295, 65535)));
    EXPECT_EQ(fieldsOf(records[1]), fieldsOf(makeFaultTypeDef(13, "other", "other", 2, 2)));
}

}  // namespace
