#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "support/CoutCapture.h"
#include "support/FreshService.h"
#include "support/TempDir.h"
#include "support/database.h"

namespace {

constexpr const char* ROWS =
    "INSERT INTO fault_type_definition VALUES (17, 'E017', 'error', 3, 5);"
    "INSERT INTO descriptions VALUES (1, 17, 2, 'Overheat', 'Too hot', '', '', 'Cool down')";

/// A small database of small pages, so that each part of it is soon hit.
void makeSmall(const std::string& file)
{
    runSql(file, "PRAGMA page_size=512");
    makeDatabase(file, ROWS);
}

void makeWithSql(const std::string& file, const std::string& sql)
{
    makeDatabase(file, ROWS);
    runSql(file, sql);
}

/// What the service makes of a file.
struct Answers {
    int opened = 0;
    int allFaultTypes = 0;
    int oneFaultType = 0;
    int allDescriptions = 0;
    int descriptionsOfOne = 0;
    std::vector<FaultTypeDef> faultTypes;
    std::vector<Descriptions> descriptions;
    std::string lines;

    /// The results in the order of the calls.
    std::vector<int> results() const
    {
        return {opened, allFaultTypes, oneFaultType, allDescriptions, descriptionsOfOne};
    }
};

Answers ask(const std::string& file)
{
    const FreshService service;
    const CoutCapture output;
    service->setDbgLevel(0);
    Answers answers;
    answers.opened = service->openDb(file, true);
    FaultTypeDef faultType;
    std::vector<Descriptions> descriptionsOfOne;
    answers.allFaultTypes = service->getFaultTypeDefTbl(answers.faultTypes);
    answers.oneFaultType = service->getFaultTypeDef(17, faultType);
    answers.allDescriptions = service->getDescriptionsTbl(answers.descriptions);
    answers.descriptionsOfOne = service->getDescriptionsByFC(17, descriptionsOfOne);
    answers.lines = output.text();
    return answers;
}

const std::vector<int> ALL_READ = {0, 1, 0, 1, 1};
const std::vector<int> NOTHING_READ = {0, -2, -1, -2, -2};

std::string failedQuery(const std::string& text)
{
    return "[ERROR] SQL3::getTbl() Sql Query failed: " + text + "\n";
}

std::string four(const std::string& line)
{
    return line + line + line + line;
}

std::string noSuchTables(const std::string& faultTypes, const std::string& descriptions)
{
    const std::string first = failedQuery("no such table: " + faultTypes + " Err=1");
    const std::string second = failedQuery("no such table: " + descriptions + " Err=1");
    return first + first + second + second;
}

void overwrite(const std::string& file, std::size_t offset, const std::string& bytes)
{
    setContents(file, contents(file).replace(offset, bytes.size(), bytes));
}

struct Damage {
    const char* name;
    std::function<void(const std::string& file)> make;
    std::vector<int> results;
    std::string lines;
};

const std::string MALFORMED = failedQuery("database disk image is malformed Err=11");
const std::string NO_DATABASE = failedQuery("file is not a database Err=26");

/// "fault_type_definition", two letters taken as one.
const std::string NAME_READ_AS_UTF16 = "慦汵彴祴数摟晥湩瑩潩";

const std::vector<Damage> DAMAGES = {
    {"Empty", [](const std::string& file) { setContents(file, ""); }, NOTHING_READ,
     noSuchTables("fault_type_definition", "descriptions")},
    {"Text", [](const std::string& file) { setContents(file, std::string(5000, 'x')); },
     NOTHING_READ, four(NO_DATABASE)},
    {"TruncatedInTheHeader",
     [](const std::string& file) {
         makeSmall(file);
         setContents(file, contents(file).substr(0, 60));
     },
     NOTHING_READ, four(MALFORMED)},
    {"TruncatedAfterTheFirstPage",
     [](const std::string& file) {
         makeSmall(file);
         setContents(file, contents(file).substr(0, 512));
     },
     NOTHING_READ, four(MALFORMED)},
    {"ZeroedHeader",
     [](const std::string& file) {
         makeSmall(file);
         overwrite(file, 0, std::string(100, '\0'));
     },
     NOTHING_READ, four(NO_DATABASE)},
    {"ZeroedAfterTheFirstPage",
     [](const std::string& file) {
         makeSmall(file);
         overwrite(file, 512, std::string(contents(file).size() - 512, '\0'));
     },
     NOTHING_READ, four(failedQuery("malformed database schema (?) Err=11"))},
    {"ImpossiblePageSize",
     [](const std::string& file) {
         makeSmall(file);
         overwrite(file, 16, std::string("\x00\x03", 2));
     },
     NOTHING_READ, four(NO_DATABASE)},
    {"WrongPageSize",
     [](const std::string& file) {
         makeSmall(file);
         overwrite(file, 16, std::string("\x04\x00", 2));
     },
     NOTHING_READ, four(failedQuery("malformed database schema (?) Err=11"))},
    {"WrongEncoding",
     [](const std::string& file) {
         makeSmall(file);
         overwrite(file, 56, std::string("\x00\x00\x00\x02", 4));
     },
     NOTHING_READ,
     four(failedQuery("malformed database schema (" + NAME_READ_AS_UTF16 + ") Err=11"))},
    {"Utf16",
     [](const std::string& file) {
         runSql(file, "PRAGMA encoding='UTF-16'");
         makeDatabase(file, ROWS);
     },
     ALL_READ, ""},
    {"NoTables", [](const std::string& file) { runSql(file, "CREATE TABLE t(a)"); }, NOTHING_READ,
     noSuchTables("fault_type_definition", "descriptions")},
    {"OneTableMissing",
     [](const std::string& file) { makeWithSql(file, "DROP TABLE descriptions"); },
     {0, 1, 0, -2, -2},
     failedQuery("no such table: descriptions Err=1") +
         failedQuery("no such table: descriptions Err=1")},
    {"ViewForATable",
     [](const std::string& file) {
         makeWithSql(file,
                     "ALTER TABLE descriptions RENAME TO texts;"
                     "CREATE VIEW descriptions AS SELECT * FROM texts ORDER BY name");
     },
     ALL_READ, ""},
    {"ViewWithoutEnd",
     [](const std::string& file) {
         makeWithSql(file,
                     "DROP TABLE descriptions; CREATE VIEW descriptions AS "
                     "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n) "
                     "SELECT i AS id, 17 AS id_fault_type, i AS name, i AS remedy FROM n");
     },
     {0, 1, 0, -2, -2},
     failedQuery("interrupted Err=9") + failedQuery("interrupted Err=9")},
    {"ViewOfItself",
     [](const std::string& file) {
         makeWithSql(file,
                     "DROP TABLE descriptions;"
                     "CREATE VIEW descriptions AS SELECT * FROM main.descriptions");
     },
     {0, 1, 0, -2, -2},
     failedQuery("view descriptions is circularly defined Err=1") +
         failedQuery("view descriptions is circularly defined Err=1")},
    {"TextAbove16Megabytes",
     [](const std::string& file) {
         makeWithSql(file, "UPDATE descriptions SET remedy = hex(zeroblob(9 * 1024 * 1024))");
     },
     {0, 1, 0, -2, -2},
     failedQuery("string or blob too big Err=18") + failedQuery("string or blob too big Err=18")},
};

class DamagedFile : public testing::TestWithParam<Damage> {};

TEST_P(DamagedFile, GivesTheResultsAndLinesDocumented)
{
    const TempDir dir;
    const std::string file = dir.file("faults.db");
    GetParam().make(file);
    const Answers answers = ask(file);
    EXPECT_EQ(answers.results(), GetParam().results);
    EXPECT_EQ(answers.lines, GetParam().lines);
}

std::string nameOf(const testing::TestParamInfo<Damage>& tested)
{
    return tested.param.name;
}

void PrintTo(const Damage& damage, std::ostream* stream)
{
    *stream << damage.name;
}

INSTANTIATE_TEST_SUITE_P(Reliability, DamagedFile, testing::ValuesIn(DAMAGES), nameOf);

class OddContents : public testing::Test {
protected:
    Answers askAfter(const std::string& sql)
    {
        makeWithSql(m_file, sql);
        return ask(m_file);
    }

    TempDir m_dir;
    const std::string m_file = m_dir.file("faults.db");
};

TEST_F(OddContents, DamagedByteNeverEndsTheProcessNorChangesTheFile)
{
    makeSmall(m_file);
    const std::string whole = contents(m_file);
    for (std::size_t offset = 0; offset < whole.size(); offset += 41) {
        std::string damaged = whole;
        damaged[offset] = static_cast<char>(damaged[offset] ^ (1 << offset % 8));
        setContents(m_file, damaged);
        const Answers answers = ask(m_file);
        ASSERT_EQ(answers.opened, 0) << offset;
        for (const int result : {answers.allFaultTypes, answers.allDescriptions}) {
            ASSERT_TRUE(result >= 0 || result == -2) << offset;
        }
        ASSERT_EQ(contents(m_file), damaged) << offset;
    }
}

TEST_F(OddContents, MissingColumnsLeaveTheirFieldsAtTheirDefaults)
{
    const Answers answers = askAfter(
        "ALTER TABLE descriptions DROP COLUMN remedy;"
        "ALTER TABLE fault_type_definition DROP COLUMN bug");
    EXPECT_EQ(answers.results(), ALL_READ);
    EXPECT_EQ(answers.lines, "");
    EXPECT_EQ(answers.descriptions.at(0).name, "Overheat");
    EXPECT_EQ(answers.descriptions.at(0).remedy, "");
    EXPECT_EQ(answers.faultTypes.at(0).bug, 0U);
    EXPECT_EQ(answers.faultTypes.at(0).clear_after_cycle_nr, 5U);
}

TEST_F(OddContents, RenamedColumnsCountAsMissing)
{
    const Answers answers = askAfter(
        "ALTER TABLE descriptions RENAME COLUMN name TO title;"
        "ALTER TABLE descriptions RENAME COLUMN remedy TO REMEDY");
    EXPECT_EQ(answers.results(), ALL_READ);
    EXPECT_EQ(answers.lines, "");
    EXPECT_EQ(answers.descriptions.at(0).name, "");
    EXPECT_EQ(answers.descriptions.at(0).remedy, "");
    EXPECT_EQ(answers.descriptions.at(0).short_description, "Too hot");
}

TEST_F(OddContents, ColumnsInAnotherOrderAreReadButFilterTheLookups)
{
    runSql(m_file,
           "CREATE TABLE fault_type_definition(alias, code);"
           "INSERT INTO fault_type_definition VALUES ('E017', 17);"
           "CREATE TABLE descriptions(name, remedy, id_fault_type);"
           "INSERT INTO descriptions VALUES ('Overheat', 17, 99)");
    const Answers answers = ask(m_file);
    // After the first query of each table "alias" is the first column and "remedy" the second.
    EXPECT_EQ(answers.results(), (std::vector<int>{0, 1, -1, 1, 1}));
    EXPECT_EQ(answers.lines, "");
    EXPECT_EQ(answers.faultTypes.at(0).code, 17U);
    EXPECT_EQ(answers.faultTypes.at(0).alias, "E017");
    EXPECT_EQ(answers.descriptions.at(0).id_fault_type, 99U);
}

TEST_F(OddContents, TextsAndBlobsEndAtTheirFirstNulByte)
{
    const Answers answers = askAfter(
        "UPDATE descriptions SET name = 'ab' || char(0) || 'cd', "
        "remedy = x'ff41004242', description = x'00'");
    EXPECT_EQ(answers.results(), ALL_READ);
    EXPECT_EQ(answers.descriptions.at(0).name, "ab");
    EXPECT_EQ(answers.descriptions.at(0).remedy,
              "\xff"
              "A");
    EXPECT_EQ(answers.descriptions.at(0).description, "");
}

TEST_F(OddContents, TextsThatAreNotUtf8AreReadByteForByte)
{
    const Answers answers = askAfter("UPDATE descriptions SET name = CAST(x'c328e2ff' AS TEXT)");
    EXPECT_EQ(answers.results(), ALL_READ);
    EXPECT_EQ(answers.descriptions.at(0).name, "\xc3\x28\xe2\xff");
}

TEST_F(OddContents, Utf16TextsAreReadAsUtf8)
{
    runSql(m_file, "PRAGMA encoding='UTF-16be'");
    const Answers answers = askAfter(
        "UPDATE descriptions SET name = '\xc3\x9c"
        "berhitzung'");
    EXPECT_EQ(answers.results(), ALL_READ);
    EXPECT_EQ(answers.descriptions.at(0).name,
              "\xc3\x9c"
              "berhitzung");
}

TEST_F(OddContents, TextsOfAMegabyteAreReadWhole)
{
    const Answers answers = askAfter(
        "UPDATE descriptions SET name = hex(zeroblob(500000)), "
        "short_description = hex(zeroblob(500000)), description = hex(zeroblob(500000)), "
        "comment = hex(zeroblob(500000)), remedy = hex(zeroblob(500000)) || 'end'");
    EXPECT_EQ(answers.results(), ALL_READ);
    EXPECT_EQ(answers.lines, "");
    EXPECT_EQ(answers.descriptions.at(0).name, std::string(1000000, '0'));
    EXPECT_EQ(answers.descriptions.at(0).remedy, std::string(1000000, '0') + "end");
}

TEST_F(OddContents, NumbersPastTheirWidthReadAsZeroAndAreReported)
{
    const Answers answers = askAfter(
        "UPDATE fault_type_definition SET bug = 4294967296, clear_after_cycle_nr = 65536;"
        "UPDATE descriptions SET id = -1, id_language = 1e300");
    EXPECT_EQ(answers.allFaultTypes, 1);
    EXPECT_EQ(answers.faultTypes.at(0).code, 17U);
    EXPECT_EQ(answers.faultTypes.at(0).bug, 0U);
    EXPECT_EQ(answers.faultTypes.at(0).clear_after_cycle_nr, 0U);
    EXPECT_EQ(answers.descriptions.at(0).id, 65535U);  // as a stream reads "-1"
    EXPECT_EQ(answers.descriptions.at(0).name, "Overheat");
    const std::string faultType =
        "[ERROR] SQL3::printError() casting value \"4294967296\", typeid=j\n"
        "[ERROR] SQL3::printError() casting value \"65536\", typeid=t\n";
    EXPECT_EQ(answers.lines, faultType + faultType);
}

}  // namespace
