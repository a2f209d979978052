#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/CoutCapture.h"
#include "support/FreshService.h"
#include "support/GlobalLocale.h"
#include "support/SqlTrace.h"
#include "support/TempDir.h"
#include "support/database.h"
#include "zav/DescriptionDb.h"

namespace {

/// The service with a database open, and what it sends to SQLite.
class LookupTest : public testing::Test {
protected:
    LookupTest() { m_service->setDbgLevel(0); }

    /// Opens a new database in place of the one before.
    void open(const std::string& furtherSql)
    {
        openFile(makeDatabase(m_dir.file("faults" + std::to_string(++m_files)), furtherSql));
    }

    /// Opens a new database that has other tables than ours in place of the one before.
    void openWith(const std::string& sql)
    {
        const std::string file = m_dir.file("faults" + std::to_string(++m_files));
        runSql(file, sql);
        openFile(file);
    }

    /// @return the statements sent since the last call.
    std::vector<std::string> sent()
    {
        const std::vector<std::string> statements = m_trace.statements();
        m_trace.clear();
        return statements;
    }

    /// Two records that a failing query leaves as they are.
    template <class Record>
    static std::vector<Record> someRecords()
    {
        std::vector<Record> records(2);
        records[1] = someRecord(Record());
        return records;
    }

    template <class Record>
    static void expectUntouched(const std::vector<Record>& records)
    {
        ASSERT_EQ(records.size(), 2U);
        expectEqual(records[0], Record());
        expectEqual(records[1], someRecord(Record()));
    }

    static FaultTypeDef someRecord(FaultTypeDef record)
    {
        record.code = 99;
        record.alias = "alias before";
        record.type = "type before";
        record.bug = 98;
        record.clear_after_cycle_nr = 97;
        return record;
    }

    static Descriptions someRecord(Descriptions record)
    {
        record.id = 99;
        record.id_fault_type = 98;
        record.id_language = 97;
        record.name = "name before";
        record.short_description = "short before";
        record.description = "description before";
        record.comment = "comment before";
        record.remedy = "remedy before";
        return record;
    }

    static void expectEqual(const FaultTypeDef& record, const FaultTypeDef& expected)
    {
        EXPECT_EQ(record.code, expected.code);
        EXPECT_EQ(record.alias, expected.alias);
        EXPECT_EQ(record.type, expected.type);
        EXPECT_EQ(record.bug, expected.bug);
        EXPECT_EQ(record.clear_after_cycle_nr, expected.clear_after_cycle_nr);
    }

    static void expectEqual(const Descriptions& record, const Descriptions& expected)
    {
        EXPECT_EQ(record.id, expected.id);
        EXPECT_EQ(record.id_fault_type, expected.id_fault_type);
        EXPECT_EQ(record.id_language, expected.id_language);
        EXPECT_EQ(record.name, expected.name);
        EXPECT_EQ(record.short_description, expected.short_description);
        EXPECT_EQ(record.description, expected.description);
        EXPECT_EQ(record.comment, expected.comment);
        EXPECT_EQ(record.remedy, expected.remedy);
    }

    const FreshService m_service;
    std::vector<FaultTypeDef> m_faultTypeDefs = someRecords<FaultTypeDef>();
    FaultTypeDef m_faultTypeDef = someRecord(FaultTypeDef());
    std::vector<Descriptions> m_descriptions = someRecords<Descriptions>();

private:
    void openFile(const std::string& file)
    {
        m_service->closeDb();
        ASSERT_EQ(m_service->openDb(file, true), 0);
        m_trace.clear();
    }

    const TempDir m_dir;
    SqlTrace m_trace;
    int m_files = 0;
};

using Statements = std::vector<std::string>;

// --- the table "fault_type_definition" ---

TEST_F(LookupTest, FaultTypesOfAnEmptyTable)
{
    open("");
    const CoutCapture capture;
    EXPECT_EQ(m_service->getFaultTypeDefTbl(m_faultTypeDefs), 0);
    EXPECT_TRUE(m_faultTypeDefs.empty());
    EXPECT_EQ(m_service->getFaultTypeDef(1, m_faultTypeDef), -1);
    expectEqual(m_faultTypeDef, someRecord(FaultTypeDef()));
    EXPECT_EQ(capture.text(), "");
}

TEST_F(LookupTest, AllFaultTypesReplaceTheListInTheDatabasesOrder)
{
    open(
        "INSERT INTO fault_type_definition VALUES(4294967295, NULL, 'error', 4294967295, 65535),"
        "(3, 'third', NULL, NULL, NULL)");
    const CoutCapture capture;
    ASSERT_EQ(m_service->getFaultTypeDefTbl(m_faultTypeDefs), 2);
    EXPECT_EQ(sent(), Statements{"SELECT * FROM \"fault_type_definition\""});
    ASSERT_EQ(m_faultTypeDefs.size(), 2U);
    FaultTypeDef expected;
    expected.code = 3;
    expected.alias = "third";
    expected.type = "n/a";
    expectEqual(m_faultTypeDefs[0], expected);
    expected.code = 4294967295U;
    expected.alias = "n/a";
    expected.type = "error";
    expected.bug = 4294967295U;
    expected.clear_after_cycle_nr = 65535;
    expectEqual(m_faultTypeDefs[1], expected);
    EXPECT_EQ(capture.text(), "");
}

TEST_F(LookupTest, FaultTypeIsFoundByItsCode)
{
    open(
        "INSERT INTO fault_type_definition VALUES(471, 'shorter', '', 0, 0),"
        "(4711, 'E4711', 'error', 5, 6), (47110, 'longer', '', 0, 0)");
    const CoutCapture capture;
    EXPECT_EQ(m_service->getFaultTypeDef(4711, m_faultTypeDef), 0);
    EXPECT_EQ(sent(), Statements{"SELECT * FROM \"fault_type_definition\" WHERE code LIKE 4711"});
    FaultTypeDef expected;
    expected.code = 4711;
    expected.alias = "E4711";
    expected.type = "error";
    expected.bug = 5;
    expected.clear_after_cycle_nr = 6;
    expectEqual(m_faultTypeDef, expected);
    EXPECT_EQ(capture.text(), "");
}

TEST_F(LookupTest, FaultTypeZeroAndTheLargestCodeAreFound)
{
    open("INSERT INTO fault_type_definition(code, alias) VALUES(0, 'zero'), (65535, 'largest')");
    EXPECT_EQ(m_service->getFaultTypeDef(0, m_faultTypeDef), 0);
    EXPECT_EQ(m_faultTypeDef.code, 0U);
    EXPECT_EQ(m_faultTypeDef.alias, "zero");
    EXPECT_EQ(m_service->getFaultTypeDef(65535, m_faultTypeDef), 0);
    EXPECT_EQ(m_faultTypeDef.code, 65535U);
    EXPECT_EQ(m_faultTypeDef.alias, "largest");
    EXPECT_EQ(sent(),
              (Statements{"SELECT * FROM \"fault_type_definition\" WHERE code LIKE 0",
                          "SELECT * FROM \"fault_type_definition\" WHERE code LIKE 65535"}));
}

TEST_F(LookupTest, CodeOfAFaultTypeIsSixteenBitsWide)
{
    open("INSERT INTO fault_type_definition(code) VALUES(65536)");
    const unsigned tooLarge = 65536;
    EXPECT_EQ(m_service->getFaultTypeDef(static_cast<unsigned short>(tooLarge), m_faultTypeDef),
              -1);
    EXPECT_EQ(sent(), Statements{"SELECT * FROM \"fault_type_definition\" WHERE code LIKE 0"});
    int (DescriptionDb::*const lookup)(unsigned short, FaultTypeDef&) =
        &DescriptionDb::getFaultTypeDef;
    EXPECT_NE(lookup, nullptr);
}

TEST_F(LookupTest, MissingFaultTypeLeavesTheRecordUntouched)
{
    open("INSERT INTO fault_type_definition(code) VALUES(1)");
    const CoutCapture capture;
    EXPECT_EQ(m_service->getFaultTypeDef(2, m_faultTypeDef), -1);
    expectEqual(m_faultTypeDef, someRecord(FaultTypeDef()));
    EXPECT_EQ(capture.text(), "");
}

TEST_F(LookupTest, CodeThatStandsTwiceIsNotFound)
{
    openWith(
        "CREATE TABLE fault_type_definition(code, alias, type, bug, clear_after_cycle_nr);"
        "INSERT INTO fault_type_definition VALUES(5, 'a', '', 0, 0), (5, 'b', '', 0, 0),"
        "(6, 'c', '', 0, 0)");
    const CoutCapture capture;
    EXPECT_EQ(m_service->getFaultTypeDef(5, m_faultTypeDef), -1);
    expectEqual(m_faultTypeDef, someRecord(FaultTypeDef()));
    EXPECT_EQ(m_service->getFaultTypeDef(6, m_faultTypeDef), 0);
    EXPECT_EQ(m_faultTypeDef.alias, "c");
    EXPECT_EQ(capture.text(), "");
}

TEST_F(LookupTest, FaultTypeIsFilteredByTheFirstOfTheCurrentColumns)
{
    openWith(
        "CREATE TABLE fault_type_definition(alias, code, type, bug, clear_after_cycle_nr);"
        "INSERT INTO fault_type_definition VALUES('8', 7, 'by alias', 0, 0),"
        "('7', 8, 'by code', 0, 0)");
    EXPECT_EQ(m_service->getFaultTypeDef(8, m_faultTypeDef), 0);
    EXPECT_EQ(m_faultTypeDef.type, "by code");
    EXPECT_EQ(m_service->getFaultTypeDef(8, m_faultTypeDef), 0);
    EXPECT_EQ(m_faultTypeDef.type, "by alias");
    EXPECT_EQ(sent(), (Statements{"SELECT * FROM \"fault_type_definition\" WHERE code LIKE 8",
                                  "SELECT * FROM \"fault_type_definition\" WHERE alias LIKE 8"}));

    // The order of one file stays until a query on the next has delivered a row.
    open("INSERT INTO fault_type_definition VALUES(8, '9', 'ours', 0, 0)");
    EXPECT_EQ(m_service->getFaultTypeDef(8, m_faultTypeDef), -1);
    EXPECT_EQ(m_service->getFaultTypeDefTbl(m_faultTypeDefs), 1);
    EXPECT_EQ(m_service->getFaultTypeDef(8, m_faultTypeDef), 0);
    EXPECT_EQ(m_faultTypeDef.type, "ours");
    EXPECT_EQ(sent(), (Statements{"SELECT * FROM \"fault_type_definition\" WHERE alias LIKE 8",
                                  "SELECT * FROM \"fault_type_definition\"",
                                  "SELECT * FROM \"fault_type_definition\" WHERE code LIKE 8"}));
}

TEST_F(LookupTest, FaultTypesWithoutTheirTableFail)
{
    openWith("CREATE TABLE t(a)");
    const std::string line =
        "[ERROR] SQL3::getTbl() Sql Query failed: no such table: fault_type_definition Err=1\n";
    const CoutCapture capture;
    EXPECT_EQ(m_service->getFaultTypeDefTbl(m_faultTypeDefs), -2);
    EXPECT_EQ(capture.text(), line);
    expectUntouched(m_faultTypeDefs);
    EXPECT_EQ(m_service->getFaultTypeDef(1, m_faultTypeDef), -1);
    EXPECT_EQ(capture.text(), line + line);
    expectEqual(m_faultTypeDef, someRecord(FaultTypeDef()));
}

TEST_F(LookupTest, FaultTypesOfAClosedServiceAreRefusedSilently)
{
    const CoutCapture capture;
    EXPECT_EQ(m_service->getFaultTypeDefTbl(m_faultTypeDefs), -1);
    expectUntouched(m_faultTypeDefs);
    EXPECT_EQ(m_service->getFaultTypeDef(1, m_faultTypeDef), -1);
    expectEqual(m_faultTypeDef, someRecord(FaultTypeDef()));
    EXPECT_EQ(capture.text(), "");
}

// --- the table "descriptions" ---

TEST_F(LookupTest, DescriptionsOfAnEmptyTable)
{
    open("");
    const CoutCapture capture;
    EXPECT_EQ(m_service->getDescriptionsTbl(m_descriptions), 0);
    EXPECT_TRUE(m_descriptions.empty());
    m_descriptions = someRecords<Descriptions>();
    EXPECT_EQ(m_service->getDescriptionsByFC(1, m_descriptions), 0);
    EXPECT_TRUE(m_descriptions.empty());
    EXPECT_EQ(capture.text(), "");
}

TEST_F(LookupTest, AllDescriptionsReplaceTheListInTheDatabasesOrder)
{
    open(
        "INSERT INTO descriptions VALUES(65535, 65535, 65535, 'Tür', 's', 'd', 'c', 'r'),"
        "(1, NULL, NULL, NULL, NULL, NULL, NULL, '')");
    const CoutCapture capture;
    ASSERT_EQ(m_service->getDescriptionsTbl(m_descriptions), 2);
    EXPECT_EQ(sent(), Statements{"SELECT * FROM \"descriptions\""});
    ASSERT_EQ(m_descriptions.size(), 2U);
    Descriptions expected;
    expected.id = 1;
    expected.name = "n/a";
    expected.short_description = "n/a";
    expected.description = "n/a";
    expected.comment = "n/a";
    expectEqual(m_descriptions[0], expected);
    expected.id = 65535;
    expected.id_fault_type = 65535;
    expected.id_language = 65535;
    expected.name = "Tür";
    expected.short_description = "s";
    expected.description = "d";
    expected.comment = "c";
    expected.remedy = "r";
    expectEqual(m_descriptions[1], expected);
    EXPECT_EQ(capture.text(), "");
}

TEST_F(LookupTest, DescriptionsOfAFaultCodeInEveryLanguage)
{
    open(
        "INSERT INTO descriptions(id, id_fault_type, id_language, name) VALUES"
        "(1, 4711, 3, 'Porte'), (2, 471, 1, 'other'), (3, 4711, 1, 'Door'), (4, 4711, 2, 'Tür'),"
        "(5, 47110, 1, 'other')");
    const CoutCapture capture;
    EXPECT_EQ(m_service->getDescriptionsByFC(4711, m_descriptions), 3);
    EXPECT_EQ(sent(), Statements{"SELECT * FROM \"descriptions\" WHERE id_fault_type=4711"});
    ASSERT_EQ(m_descriptions.size(), 3U);
    const struct {
        int id;
        int language;
        const char* name;
    } expected[] = {{1, 3, "Porte"}, {3, 1, "Door"}, {4, 2, "Tür"}};
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_EQ(m_descriptions[i].id, expected[i].id);
        EXPECT_EQ(m_descriptions[i].id_fault_type, 4711);
        EXPECT_EQ(m_descriptions[i].id_language, expected[i].language);
        EXPECT_EQ(m_descriptions[i].name, expected[i].name);
    }
    EXPECT_EQ(capture.text(), "");
}

TEST_F(LookupTest, FaultCodeWithoutDescriptionsEmptiesTheList)
{
    open("INSERT INTO descriptions(id_fault_type) VALUES(1)");
    const CoutCapture capture;
    EXPECT_EQ(m_service->getDescriptionsByFC(2, m_descriptions), 0);
    EXPECT_TRUE(m_descriptions.empty());
    EXPECT_EQ(capture.text(), "");
}

TEST_F(LookupTest, FaultCodeZeroIsLookedUpLikeAnyOther)
{
    open("INSERT INTO descriptions(id_fault_type, name) VALUES(0, 'zero'), (NULL, 'none')");
    EXPECT_EQ(m_service->getDescriptionsByFC(0, m_descriptions), 1);
    EXPECT_EQ(sent(), Statements{"SELECT * FROM \"descriptions\" WHERE id_fault_type=0"});
    EXPECT_EQ(m_descriptions.at(0).name, "zero");
}

TEST_F(LookupTest, FaultCodeOfDescriptionsIsThirtyTwoBitsWide)
{
    open(
        "INSERT INTO descriptions(id_fault_type, name) VALUES(65536, 'over'), (0, 'zero'),"
        "(4294967295, 'largest')");
    const CoutCapture capture;
    EXPECT_EQ(m_service->getDescriptionsByFC(65536, m_descriptions), 1);
    EXPECT_EQ(m_descriptions.at(0).name, "over");
    EXPECT_EQ(m_descriptions.at(0).id_fault_type, 0);
    EXPECT_EQ(m_service->getDescriptionsByFC(4294967295U, m_descriptions), 1);
    EXPECT_EQ(m_descriptions.at(0).name, "largest");
    EXPECT_EQ(sent(),
              (Statements{"SELECT * FROM \"descriptions\" WHERE id_fault_type=65536",
                          "SELECT * FROM \"descriptions\" WHERE id_fault_type=4294967295"}));
    EXPECT_EQ(capture.text(),
              "[ERROR] SQL3::printError() casting value \"65536\", typeid=t\n"
              "[ERROR] SQL3::printError() casting value \"4294967295\", typeid=t\n");
}

TEST_F(LookupTest, DescriptionsAreFilteredByTheSecondOfTheCurrentColumns)
{
    openWith(
        "CREATE TABLE descriptions(id, id_language, id_fault_type, name, short_description,"
        " description, comment, remedy);"
        "INSERT INTO descriptions(id, id_language, id_fault_type, name) VALUES"
        "(1, 2, 3, 'by fault type'), (2, 3, 2, 'by language')");
    EXPECT_EQ(m_service->getDescriptionsByFC(3, m_descriptions), 1);
    EXPECT_EQ(m_descriptions.at(0).name, "by fault type");
    EXPECT_EQ(m_service->getDescriptionsByFC(3, m_descriptions), 1);
    EXPECT_EQ(m_descriptions.at(0).name, "by language");
    EXPECT_EQ(m_descriptions.at(0).id_language, 3);
    EXPECT_EQ(sent(), (Statements{"SELECT * FROM \"descriptions\" WHERE id_fault_type=3",
                                  "SELECT * FROM \"descriptions\" WHERE id_language=3"}));
}

TEST_F(LookupTest, DescriptionsWithoutTheirTableFail)
{
    openWith("CREATE TABLE t(a)");
    const std::string line =
        "[ERROR] SQL3::getTbl() Sql Query failed: no such table: descriptions Err=1\n";
    const CoutCapture capture;
    EXPECT_EQ(m_service->getDescriptionsTbl(m_descriptions), -2);
    EXPECT_EQ(capture.text(), line);
    expectUntouched(m_descriptions);
    EXPECT_EQ(m_service->getDescriptionsByFC(1, m_descriptions), -2);
    EXPECT_EQ(capture.text(), line + line);
    expectUntouched(m_descriptions);
}

TEST_F(LookupTest, DescriptionsOfAClosedServiceAreRefusedSilently)
{
    const CoutCapture capture;
    EXPECT_EQ(m_service->getDescriptionsTbl(m_descriptions), -1);
    expectUntouched(m_descriptions);
    EXPECT_EQ(m_service->getDescriptionsByFC(1, m_descriptions), -1);
    expectUntouched(m_descriptions);
    EXPECT_EQ(capture.text(), "");
}

// --- both tables ---

TEST_F(LookupTest, ConnectionAloneDecidesWhetherADatabaseIsOpen)
{
    const TempDir dir;
    ASSERT_EQ(DescriptionDb::sqliteDb.openDb(
                  makeDatabase(dir.file("faults.db"),
                               "INSERT INTO fault_type_definition(code) VALUES(7);"
                               "INSERT INTO descriptions(id_fault_type) VALUES(7)"),
                  true),
              0);
    EXPECT_EQ(m_service->closeDb(), -1);  // not open to the service
    EXPECT_EQ(m_service->getFaultTypeDefTbl(m_faultTypeDefs), 1);
    EXPECT_EQ(m_service->getFaultTypeDef(7, m_faultTypeDef), 0);
    EXPECT_EQ(m_service->getDescriptionsTbl(m_descriptions), 1);
    EXPECT_EQ(m_service->getDescriptionsByFC(7, m_descriptions), 1);
}

TEST_F(LookupTest, GlobalLocaleThatGroupsDigitsGroupsTheCode)
{
    open("");
    const GlobalLocale global(groupingLocale());
    m_service->getFaultTypeDef(4711, m_faultTypeDef);
    m_service->getDescriptionsByFC(4711, m_descriptions);
    EXPECT_EQ(sent(), (Statements{"SELECT * FROM \"fault_type_definition\" WHERE code LIKE 4.711",
                                  "SELECT * FROM \"descriptions\" WHERE id_fault_type=4.711"}));
}

// --- a file with fewer columns than ours ---

TEST_F(LookupTest, FilterColumnPastTheEndOfTheCurrentColumnsFails)
{
    openWith("CREATE TABLE descriptions(name); INSERT INTO descriptions VALUES('only')");
    EXPECT_EQ(m_service->getDescriptionsTbl(m_descriptions), 1);
    EXPECT_EQ(m_descriptions.at(0).name, "only");
    m_descriptions = someRecords<Descriptions>();
    sent();

    const CoutCapture capture;
    EXPECT_EQ(m_service->getDescriptionsByFC(4711, m_descriptions), -2);
    EXPECT_EQ(capture.text(),
              "[ERROR] SQL3::getTbl() Sql Query failed: near \"=\": syntax error Err=1\n");
    EXPECT_EQ(sent(), Statements());  // SQLite does not get as far as running it
    expectUntouched(m_descriptions);
}

TEST_F(LookupTest, FaultTypeIsFilteredByTheOnlyColumn)
{
    openWith(
        "CREATE TABLE fault_type_definition(alias);"
        "INSERT INTO fault_type_definition VALUES('7')");
    EXPECT_EQ(m_service->getFaultTypeDefTbl(m_faultTypeDefs), 1);
    EXPECT_EQ(m_service->getFaultTypeDef(7, m_faultTypeDef), 0);
    EXPECT_EQ(m_faultTypeDef.alias, "7");
    EXPECT_EQ(m_service->getFaultTypeDef(8, m_faultTypeDef), -1);
}

TEST_F(LookupTest, FaultTypeFailsWhereTheFilterColumnIsMissing)
{
    openWith(
        "CREATE TABLE fault_type_definition(alias);"
        "INSERT INTO fault_type_definition VALUES('7')");
    const CoutCapture capture;
    EXPECT_EQ(m_service->getFaultTypeDef(7, m_faultTypeDef), -1);
    EXPECT_EQ(capture.text(),
              "[ERROR] SQL3::getTbl() Sql Query failed: no such column: code Err=1\n");
    expectEqual(m_faultTypeDef, someRecord(FaultTypeDef()));
}

TEST_F(LookupTest, ColumnsThatTheLibraryDoesNotKnowAreSkipped)
{
    openWith(
        "CREATE TABLE fault_type_definition(Code, alias, extra, bug);"
        "INSERT INTO fault_type_definition VALUES(7, 'seven', 'x', 8)");
    const CoutCapture capture;
    EXPECT_EQ(m_service->getFaultTypeDefTbl(m_faultTypeDefs), 1);
    FaultTypeDef expected;
    expected.alias = "seven";
    expected.bug = 8;
    expectEqual(m_faultTypeDefs.at(0), expected);  // "Code" is another name than "code"
    EXPECT_EQ(capture.text(), "");
}

TEST_F(LookupTest, EmptyColumnNameOfAFaultTypeFailsTheLookup)
{
    openWith(
        "CREATE TABLE fault_type_definition(\"\", code);"
        "INSERT INTO fault_type_definition VALUES('x', 7)");
    EXPECT_EQ(m_service->getFaultTypeDef(7, m_faultTypeDef), 0);
    EXPECT_EQ(m_faultTypeDef.code, 7U);

    const CoutCapture capture;
    EXPECT_EQ(m_service->getFaultTypeDef(7, m_faultTypeDef), -1);
    EXPECT_EQ(capture.text(),
              "[ERROR] SQL3::getTbl() Sql Query failed: near \"7\": syntax error Err=1\n");
    EXPECT_EQ(m_faultTypeDef.code, 7U);
}

}  // namespace
