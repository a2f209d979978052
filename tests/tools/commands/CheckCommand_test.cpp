#include <gtest/gtest.h>

#include "tools/ZavCommand.h"
#include "support/database.h"

namespace {

const std::string HEADER = "finding,table,row,column,value,delivered,advice\r\n";

/// One fault type with its texts in one language, nothing surprising about them.
const std::string CLEAN =
    "INSERT INTO fault_type_definition VALUES(1,'a','b',0,0);"
    "INSERT INTO descriptions VALUES(1,1,1,'n','s','d','c','r');";

struct Case {
    std::string name;
    std::string sql;
    std::string findings;
};

std::ostream& operator<<(std::ostream& stream, const Case& row)
{
    return stream << row.name;
}

class CheckFindings : public testing::TestWithParam<Case> {};

TEST_P(CheckFindings, AreListed)
{
    const Case& row = GetParam();
    const ZavCommand zav;
    const CommandResult result = zav.run("check --format csv " + zav.database(CLEAN + row.sql));
    EXPECT_EQ(result.output, HEADER + row.findings);
    EXPECT_EQ(result.errors, "");
    EXPECT_EQ(result.status, row.findings.empty() ? 0 : 1);
}

const std::string FAULT_ORDER =
    "\"make the table anew with its columns in this order: code, alias, type, bug, "
    "clear_after_cycle_nr\"\r\n";
const std::string TEXT_ORDER =
    "\"make the table anew with its columns in this order: id, id_fault_type, id_language, name, "
    "short_description, description, comment, remedy\"\r\n";
const std::string UNKNOWN = "\"add the fault type, or correct or delete the row\"\r\n";
const std::string UNKNOWN_0 = "\"the texts, of fault type 0, which is nowhere defined\"," + UNKNOWN;
const std::string UP_TO_65535 = ",write a whole number from 0 to 65535\r\n";

/// A number that is delivered, but not what a lookup finds the row by.
std::string notFound(const std::string& number, const std::string& lookup = "getDescriptionsByFC()")
{
    return ",\"" + number + ", by which " + lookup + " does not find the row\"";
}

/// Without types: what is stored stays as it is written.
const std::string TEXT_COLUMNS =
    "id,id_fault_type,id_language,name,short_description,description,comment,remedy";

std::string replaceFaultTable(const std::string& columns, const std::string& values)
{
    return "DROP TABLE fault_type_definition; CREATE TABLE fault_type_definition(" + columns +
           "); INSERT INTO fault_type_definition VALUES(" + values + ")";
}

std::string replaceTextTable(const std::string& columns, const std::string& values)
{
    return "DROP TABLE descriptions; CREATE TABLE descriptions(" + columns +
           "); CREATE INDEX i ON descriptions(id_fault_type);"
           "INSERT INTO descriptions VALUES(" +
           values + ")";
}

const Case CASES[] = {
    {"Clean", "", ""},
    {"MissingTable", "DROP TABLE descriptions",
     "missing-table,descriptions,,,,no records: every query of the table fails,"
     "create the table; zav(1) shows the statement\r\n"},
    {"BothTablesMissing", "DROP TABLE descriptions; DROP TABLE fault_type_definition",
     "missing-table,fault_type_definition,,,,no records: every query of the table fails,"
     "create the table; zav(1) shows the statement\r\n"
     "missing-table,descriptions,,,,no records: every query of the table fails,"
     "create the table; zav(1) shows the statement\r\n"},
    {"MissingTextColumn", "ALTER TABLE fault_type_definition DROP COLUMN type",
     "missing-column,fault_type_definition,,type,,"
     "the text last read (at first an empty one) in every record,"
     "\"ALTER TABLE \"\"fault_type_definition\"\" ADD COLUMN \"\"type\"\" VARCHAR;\"\r\n"},
    {"MissingNumber", "ALTER TABLE descriptions DROP COLUMN id_language",
     "missing-column,descriptions,,id_language,,"
     "the number last read (at first 0) in every record,"
     "\"ALTER TABLE \"\"descriptions\"\" ADD COLUMN \"\"id_language\"\" INTEGER;\"\r\n"},
    {"MissingCode", replaceFaultTable("alias,type,bug,clear_after_cycle_nr", "'a','b',0,0"),
     "missing-column,fault_type_definition,,code,,"
     "the number last read (at first 0) in every record; getFaultTypeDef() fails," +
         FAULT_ORDER +
         "column-order,fault_type_definition,,,\"alias, type, bug, clear_after_cycle_nr\","
         "\"once a query has returned rows, getFaultTypeDef() finds by \"\"alias\"\" instead of "
         "\"\"code\"\"\"," +
         FAULT_ORDER},
    {"OtherLetters", "ALTER TABLE fault_type_definition RENAME COLUMN alias TO Alias",
     "letter-case,fault_type_definition,,Alias,,"
     "\"the text last read (at first an empty one) in every record: the library looks for "
     "\"\"alias\"\"\","
     "\"ALTER TABLE \"\"fault_type_definition\"\" RENAME COLUMN \"\"Alias\"\" TO "
     "\"\"alias\"\";\"\r\n"},
    {"OtherLettersOfTheKey", "ALTER TABLE fault_type_definition RENAME COLUMN code TO Code",
     "letter-case,fault_type_definition,,Code,,"
     "\"the number last read (at first 0) in every record: the library looks for \"\"code\"\"\","
     "\"ALTER TABLE \"\"fault_type_definition\"\" RENAME COLUMN \"\"Code\"\" TO "
     "\"\"code\"\";\"\r\n"},
    {"ExtraColumnAtTheEnd", "ALTER TABLE fault_type_definition ADD COLUMN owner DEFAULT 'x'",
     "extra-column,fault_type_definition,,owner,,nothing: the library skips it,"
     "keep it only if another program needs it\r\n"},
    {"OtherOrderThatChangesTheLookupOfFaults",
     replaceFaultTable("alias,code,type,bug,clear_after_cycle_nr", "'a',1,'b',0,0"),
     "column-order,fault_type_definition,,,\"alias, code, type, bug, clear_after_cycle_nr\","
     "\"once a query has returned rows, getFaultTypeDef() finds by \"\"alias\"\" instead of "
     "\"\"code\"\"\"," +
         FAULT_ORDER},
    {"OtherOrderThatChangesTheLookupOfTexts",
     replaceTextTable("id,id_language,id_fault_type,name,short_description,description,comment,"
                      "remedy",
                      "1,1,1,'n','s','d','c','r'"),
     "column-order,descriptions,,,\"id, id_language, id_fault_type, name, short_description, "
     "description, comment, remedy\","
     "\"once a query has returned rows, getDescriptionsByFC() finds by \"\"id_language\"\" instead "
     "of \"\"id_fault_type\"\"\"," +
         TEXT_ORDER},
    {"OtherOrderThatMakesTheLookupFail",
     replaceFaultTable("\"order\",code,alias,type,bug,clear_after_cycle_nr", "0,1,'a','b',0,0"),
     "extra-column,fault_type_definition,,order,,nothing: the library skips it,"
     "keep it only if another program needs it\r\n"
     "column-order,fault_type_definition,,,"
     "\"order, code, alias, type, bug, clear_after_cycle_nr\","
     "\"once a query has returned rows, getFaultTypeDef() fails\"," +
         FAULT_ORDER},
    {"OtherOrderThatChangesNoLookup",
     replaceFaultTable("code,type,alias,bug,clear_after_cycle_nr", "1,'b','a',0,0"),
     "column-order,fault_type_definition,,,\"code, type, alias, bug, clear_after_cycle_nr\","
     "every field right; no lookup changes," +
         FAULT_ORDER},
    {"NumberTooLarge", "UPDATE fault_type_definition SET clear_after_cycle_nr=65536",
     "out-of-range,fault_type_definition,code=1,clear_after_cycle_nr,65536,0" + UP_TO_65535},
    {"NumberBelowZero", "UPDATE fault_type_definition SET clear_after_cycle_nr=-1",
     "out-of-range,fault_type_definition,code=1,clear_after_cycle_nr,-1,65535" + UP_TO_65535},
    {"NumberFarBelowZero", "UPDATE fault_type_definition SET clear_after_cycle_nr=-70000",
     "out-of-range,fault_type_definition,code=1,clear_after_cycle_nr,-70000,0" + UP_TO_65535},
    {"LargestNumbers",
     "UPDATE fault_type_definition SET clear_after_cycle_nr=65535, "
     "bug=4294967295",
     ""},
    {"WideNumberTooLarge", "UPDATE fault_type_definition SET bug=4294967296",
     "out-of-range,fault_type_definition,code=1,bug,4294967296,0,"
     "write a whole number from 0 to 4294967295\r\n"},
    {"NotANumber", "UPDATE fault_type_definition SET clear_after_cycle_nr='three'",
     "not-a-number,fault_type_definition,code=1,clear_after_cycle_nr,three,0" + UP_TO_65535},
    {"EmptyNumber", "UPDATE fault_type_definition SET clear_after_cycle_nr=''",
     "not-a-number,fault_type_definition,code=1,clear_after_cycle_nr,,0" + UP_TO_65535},
    {"Fraction", "UPDATE fault_type_definition SET clear_after_cycle_nr=2.75",
     "inexact-number,fault_type_definition,code=1,clear_after_cycle_nr,2.75,2" + UP_TO_65535},
    {"NumberWithUnit", "UPDATE fault_type_definition SET clear_after_cycle_nr='42 ms'",
     "inexact-number,fault_type_definition,code=1,clear_after_cycle_nr,42 ms,42" + UP_TO_65535},
    {"NumberAfterZeros",
     replaceFaultTable("code,alias,type,bug,clear_after_cycle_nr", "1,'a','b','00','007'"),
     "inexact-number,fault_type_definition,code=1,bug,00,0,"
     "write a whole number from 0 to 4294967295\r\n"
     "inexact-number,fault_type_definition,code=1,clear_after_cycle_nr,007,7" +
         UP_TO_65535},
    {"NullNumber", "UPDATE descriptions SET id_language=NULL",
     "null,descriptions,id=1,id_language,NULL,0,write a number\r\n"},
    {"NullText", "UPDATE descriptions SET remedy=NULL",
     "null,descriptions,id=1,remedy,NULL,\"\"\"n/a\"\"\",write '' if there is no text\r\n"},
    {"TextWithNul", "UPDATE descriptions SET remedy='ab' || char(0) || 'c'",
     std::string("cut-text,descriptions,id=1,remedy,ab") + '\0' +
         "c,the 2 bytes before the NUL byte,"
         "remove the NUL byte\r\n"},
    {"TextWithNulAfterOneByte", "UPDATE descriptions SET remedy='a' || char(0)",
     std::string("cut-text,descriptions,id=1,remedy,a") + '\0' +
         ",the 1 byte before the NUL byte,remove the NUL byte\r\n"},
    {"TextWithNulInFront", "UPDATE descriptions SET remedy=char(0)",
     std::string("cut-text,descriptions,id=1,remedy,") + '\0' +
         ",the 0 bytes before the NUL byte,remove the NUL byte\r\n"},
    {"TextNotUtf8", "UPDATE descriptions SET remedy=CAST(x'fc' AS TEXT)",
     "not-utf8,descriptions,id=1,remedy,\xfc,the bytes unchanged,store the text in UTF-8\r\n"},
    {"Quote", "UPDATE descriptions SET remedy='it''s'",
     "quote,descriptions,id=1,remedy,it's,"
     "\"the text unchanged, but statement texts break at it\","
     "double the quotes of a record that becomes a statement\r\n"},
    {"LongValueIsShortened",
     "UPDATE descriptions SET remedy='''' || replace(hex(zeroblob(30)),'0','ä') || 'b'",
     "quote,descriptions,id=1,remedy,'äääääääääääääääääääääääääääääääääääääääääääääääääääääääääää.."
     "."
     ",\"the text unchanged, but statement texts break at it\","
     "double the quotes of a record that becomes a statement\r\n"},
    {"CodeBeyondTheLookup",
     "INSERT INTO fault_type_definition VALUES(65536,'','',0,0);"
     "INSERT INTO descriptions VALUES(2,65536,1,'','','','','')",
     "code-range,fault_type_definition,code=65536,code,65536,"
     "\"65536 from the whole table, but getFaultTypeDef() cannot ask for it\","
     "use codes up to 65535\r\n"
     "out-of-range,descriptions,id=2,id_fault_type,65536,0" +
         UP_TO_65535 + "unknown-fault,descriptions,id=2,id_fault_type,65536," + UNKNOWN_0},
    {"CodeBeyondTheField",
     "INSERT INTO fault_type_definition VALUES(4294967296,'','',0,0);"
     "INSERT INTO descriptions VALUES(2,4294967296,1,'','','','','')",
     "out-of-range,fault_type_definition,code=4294967296,code,4294967296,0,"
     "write a whole number from 0 to 4294967295\r\n"
     "out-of-range,descriptions,id=2,id_fault_type,4294967296,0" +
         UP_TO_65535},
    {"UnknownFault", "INSERT INTO descriptions VALUES(2,9,1,'','','','','')",
     "unknown-fault,descriptions,id=2,id_fault_type,9,"
     "\"the texts, of fault type 9, which is nowhere defined\"," +
         UNKNOWN},
    {"UnknownFaultByTheNumberThatIsDelivered",
     "INSERT INTO descriptions VALUES(2,'9 ms',1,'','','','','')",
     "inexact-number,descriptions,id=2,id_fault_type,9 ms" + notFound("9") + UP_TO_65535 +
         "unknown-fault,descriptions,id=2,id_fault_type,9 ms,"
         "\"the texts, of fault type 9, which is nowhere defined\"," +
         UNKNOWN},
    {"FaultTypeAsAFraction", replaceTextTable(TEXT_COLUMNS, "1,1.0,1,'n','s','d','c','r'"),
     "inexact-number,descriptions,id=1,id_fault_type,1.0,1" + UP_TO_65535},
    {"FaultTypeAfterABlank", replaceTextTable(TEXT_COLUMNS, "1,' 1',1,'n','s','d','c','r'"),
     "inexact-number,descriptions,id=1,id_fault_type, 1" + notFound("1") + UP_TO_65535},
    {"FaultTypeWithLetters", "UPDATE descriptions SET id_fault_type='1abc'",
     "inexact-number,descriptions,id=1,id_fault_type,1abc" + notFound("1") + UP_TO_65535},
    {"FaultTypeAsATextThatTheLookupDoesNotFind",
     replaceTextTable(TEXT_COLUMNS, "1,'1',1,'n','s','d','c','r'"),
     "inexact-number,descriptions,id=1,id_fault_type,1" + notFound("1") +
         ",\"declare id_fault_type as INTEGER, and write a number rather than a text\"\r\n"},
    {"FaultTypeAsATextThatTheLookupFinds", "UPDATE descriptions SET id_fault_type='1'", ""},
    {"NullFaultType", "UPDATE descriptions SET id_fault_type=NULL",
     "null,descriptions,id=1,id_fault_type,NULL,0,write a number\r\n"},
    {"FaultTypeThatIsNoNumber", "UPDATE descriptions SET id_fault_type='abc'",
     "not-a-number,descriptions,id=1,id_fault_type,abc,0" + UP_TO_65535 +
         "unknown-fault,descriptions,id=1,id_fault_type,abc," + UNKNOWN_0},
    {"FaultTypeThatIsNoNumberWhereThereIsFaultType0",
     "UPDATE fault_type_definition SET code=0; UPDATE descriptions SET id_fault_type='abc'",
     "not-a-number,descriptions,id=1,id_fault_type,abc,0" + UP_TO_65535},
    {"CodeWithLetters",
     replaceFaultTable("code,alias,type,bug,clear_after_cycle_nr", "'1abc','a','b',0,0"),
     "inexact-number,fault_type_definition,code='1abc',code,1abc" +
         notFound("1", "getFaultTypeDef()") + ",write a whole number from 0 to 4294967295\r\n"},
    {"DuplicateTextByTheNumbersThatAreDelivered",
     replaceTextTable(TEXT_COLUMNS, "1,1,1,'n','s','d','c','r'),(2,1.0,'1st','n','s','d','c','r'"),
     "inexact-number,descriptions,id=2,id_fault_type,1.0,1" + UP_TO_65535 +
         "inexact-number,descriptions,id=2,id_language,1st,1" + UP_TO_65535 +
         "duplicate-text,descriptions,id=2,id_language,1st,"
         "one more record in this language for fault type 1,"
         "keep one row for each fault type and language\r\n"},
    {"NoTextIsMissingByTheNumbersThatAreDelivered",
     "INSERT INTO fault_type_definition VALUES(2,'','',0,0);" +
         replaceTextTable(TEXT_COLUMNS,
                          "1,1,1,'n','s','d','c','r'),(2,'2nd','1st','n','s','d','c','r'"),
     "inexact-number,descriptions,id=2,id_fault_type,2nd" + notFound("2") + UP_TO_65535 +
         "inexact-number,descriptions,id=2,id_language,1st,1" + UP_TO_65535},
    {"MissingLanguage",
     "INSERT INTO fault_type_definition VALUES(2,'','',0,0);"
     "INSERT INTO descriptions VALUES(2,2,10,'','','','','')",
     "missing-text,descriptions,id_fault_type=1,id_language,10,"
     "\"no text in this language, which others have\",add the text\r\n"
     "missing-text,descriptions,id_fault_type=2,id_language,1,"
     "\"no text in this language, which others have\",add the text\r\n"},
    {"DuplicateText", "INSERT INTO descriptions VALUES(2,1,1,'','','','','')",
     "duplicate-text,descriptions,id=2,id_language,1,"
     "one more record in this language for fault type 1,"
     "keep one row for each fault type and language\r\n"},
    {"DuplicateCode",
     replaceFaultTable("code,alias,type,bug,clear_after_cycle_nr", "1,'a','b',0,0),(1,'c','',0,0"),
     "duplicate-code,fault_type_definition,code=1,code,1,"
     "\"2 records from the whole table, but none from getFaultTypeDef()\","
     "keep one; declare code as INTEGER PRIMARY KEY AUTOINCREMENT NOT NULL\r\n"},
    {"DuplicateId",
     replaceTextTable(TEXT_COLUMNS, "1,1,1,'n','s','d','c','r'),(1,1,2,'','','','',''"),
     "duplicate-id,descriptions,id=1,id,1,2 records,"
     "keep one; declare id as INTEGER PRIMARY KEY AUTOINCREMENT NOT NULL\r\n"},
    {"KeyThatIsNoNumber",
     replaceTextTable(TEXT_COLUMNS, "'o''ne',1,1,'n','s','d','c','r'),(NULL,1,2,'','','','',''"),
     "not-a-number,descriptions,id='o''ne',id,o'ne,0" + UP_TO_65535 +
         "null,descriptions,row 2,id,NULL,0,write a number\r\n"},
    {"MissingIndex", "DROP INDEX descriptions_id_fault_type",
     "missing-index,descriptions,,id_fault_type,,"
     "\"the right records, but getDescriptionsByFC() reads the whole table\","
     "\"CREATE INDEX \"\"descriptions_id_fault_type\"\" ON \"\"descriptions\"\" "
     "(\"\"id_fault_type\"\");\"\r\n"},
    {"IndexOfMoreColumns",
     "DROP INDEX descriptions_id_fault_type;"
     "CREATE INDEX i ON descriptions(id_fault_type, id_language)",
     ""},
    {"IndexThatDoesNotHelp",
     "DROP INDEX descriptions_id_fault_type;"
     "CREATE INDEX i ON descriptions(id_language, id_fault_type)",
     "missing-index,descriptions,,id_fault_type,,"
     "\"the right records, but getDescriptionsByFC() reads the whole table\","
     "\"CREATE INDEX \"\"descriptions_id_fault_type\"\" ON \"\"descriptions\"\" "
     "(\"\"id_fault_type\"\");\"\r\n"},
};

INSTANTIATE_TEST_SUITE_P(CheckCommand, CheckFindings, testing::ValuesIn(CASES),
                         [](const auto& suite) { return suite.param.name; });

const std::string WAL_MODE =
    "wal-mode,,,,wal,"
    "\"every query fails on a read-only medium, or without the right to write to the folder\","
    "run PRAGMA journal_mode=DELETE before shipping; a -wal file is part of the data\r\n";

std::string journalFile(const std::string& name)
{
    return "journal-file,,,," + name +
           ",\"the data once SQLite has applied the journal; "
           "without the right to write, every query may fail\","
           "\"run VACUUM before shipping, which leaves no journal\"\r\n";
}

/// Copies a database with its journal while a transaction of many pages is open, as its writer
/// would leave it by dying.
const std::string DIE =
    "sqlite3 faults.db 'PRAGMA cache_size=1' BEGIN "
    "'UPDATE descriptions SET remedy=hex(zeroblob(9000))' "
    "'.shell for file in faults.db*; do cp $file dead-$file; done' ROLLBACK >/dev/null;"
    "for file in dead-*; do mv $file ${file#dead-}; done";

TEST(CheckCommand, FindsTheJournalsThatWereThereBefore)
{
    struct State {
        std::string commands;
        std::string findings;
    };
    const std::string wal = "sqlite3 faults.db 'PRAGMA journal_mode=WAL' >/dev/null;";
    const State states[] = {
        {"true", ""},
        {wal, WAL_MODE},
        {wal + DIE, WAL_MODE},
        {wal + "touch faults.db-journal", WAL_MODE + journalFile("faults.db-journal")},
        {DIE, journalFile("faults.db-journal")},
        {"touch faults.db-journal", journalFile("faults.db-journal")},
        {"cp faults.db old.db;" + wal + DIE + "; mv old.db faults.db; rm -f faults.db-shm",
         journalFile("faults.db-wal")},
        {"mkdir real; mv faults.db real; touch real/faults.db-journal; ln -s real/faults.db .",
         journalFile("faults.db-journal")},
    };
    for (const State& row : states) {
        const ZavCommand zav;
        zav.database(CLEAN);
        const std::string inFolder = "cd " + zav.file("") + ";";
        ASSERT_EQ(zav.shell(inFolder + row.commands).status, 0) << row.commands;
        const CommandResult result = zav.shell(inFolder + "zav check --format csv faults.db");
        EXPECT_EQ(result.output, HEADER + row.findings) << row.commands;
        EXPECT_EQ(result.errors, "") << row.commands;
        EXPECT_EQ(result.status, row.findings.empty() ? 0 : 1) << row.commands;
        const std::string advice = "sqlite3 faults.db 'PRAGMA journal_mode=DELETE; VACUUM' >&2;";
        EXPECT_EQ(zav.shell(inFolder + advice + "zav check faults.db").output, "no findings\n")
            << row.commands;
    }
}

TEST(CheckCommand, ListsFindingsOfTheFileInEveryFormat)
{
    const ZavCommand zav;
    const std::string file = zav.database(CLEAN);
    zav.shell("touch " + file + "-journal");
    EXPECT_EQ(zav.run("check " + file, "COLUMNS=60").output, R"(finding    journal-file
table
row
column
value      faults.db-journal
delivered  the data once SQLite has applied the journal;
           without the right to write, every query may fail
advice     run VACUUM before shipping, which leaves no
           journal

1 finding
)");
    EXPECT_EQ(zav.run("check --format json " + file).output, R"([
  {
    "finding": "journal-file",
    "table": "",
    "row": "",
    "column": "",
    "value": "faults.db-journal",
    "delivered": "the data once SQLite has applied the journal; without the right to write, every query may fail",
    "advice": "run VACUUM before shipping, which leaves no journal"
  }
]
)");
}

TEST(CheckCommand, ReadsATableOfAsManyColumnsAsSqliteAllows)
{
    constexpr int MOST_COLUMNS = 2000;
    const ZavCommand zav;
    std::string columns = TEXT_COLUMNS;
    for (int i = 8; i < MOST_COLUMNS; ++i) {
        columns += ",c" + std::to_string(i);
    }
    const std::string file = zav.database(CLEAN);
    runSql(file, "DROP TABLE descriptions; CREATE TABLE descriptions(" + columns +
                     "); INSERT INTO descriptions(id, id_fault_type) VALUES(7, '1st')");
    const CommandResult result = zav.run("check --format csv " + file);
    EXPECT_EQ(result.errors, "");
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.output.find("inexact-number,descriptions,id=7,id_fault_type,1st,1,"),
              std::string::npos);
}

TEST(CheckCommand, TellsWhetherTheLookupFindsWhatIsDelivered)
{
    const ZavCommand zav;
    const std::string file = zav.database("INSERT INTO fault_type_definition VALUES(1,'','',0,0)");
    int found = 0;
    for (const std::string type : {"", "INTEGER", "REAL", "VARCHAR"}) {
        for (const std::string value : {"1", "1.0", "'1'", "' 1'", "'1st'", "'01'", "x'31'"}) {
            runSql(file, "DROP TABLE descriptions; CREATE TABLE descriptions(id, id_fault_type " +
                             type + "); INSERT INTO descriptions VALUES(7," + value + ")");
            const bool isFound = zav.run("texts --code 1 " + file).status == 0;
            const std::string findings = zav.run("check " + file).output;
            EXPECT_EQ(findings.find("does not find the row") == std::string::npos, isFound)
                << type << ' ' << value << '\n'
                << findings;
            found += isFound ? 1 : 0;
        }
    }
    EXPECT_EQ(found, 2 + 5 + 5 + 2);
}

TEST(CheckCommand, AdviceOfColumnsAndIndexWorks)
{
    for (const std::string damage : {"ALTER TABLE descriptions DROP COLUMN remedy",
                                     "ALTER TABLE descriptions RENAME COLUMN name TO NAME",
                                     "DROP INDEX descriptions_id_fault_type"}) {
        const ZavCommand zav;
        const std::string file = zav.database(damage);
        ASSERT_EQ(zav.run("check " + file).status, 1) << damage;
        const std::string advice =
            zav.shell("zav check " + file + " | sed -n 's/^advice *//p'").output;
        runSql(file, advice);
        EXPECT_EQ(zav.run("check " + file).output, "no findings\n") << damage;
    }
}

TEST(CheckCommand, GroupsRowsForReaders)
{
    const ZavCommand zav;
    const std::string file =
        zav.database(CLEAN +
                     "UPDATE descriptions SET remedy=NULL;"
                     "INSERT INTO descriptions VALUES(3,1,2,'','','','','it''s'),"
                     "(4,1,3,'','','','',NULL)");
    const CommandResult result = zav.run("check " + file, "COLUMNS=40");
    EXPECT_EQ(result.output, R"(finding    null
table      descriptions
row        id=1, id=4
column     remedy
value      NULL
delivered  "n/a"
advice     write '' if there is no text

finding    quote
table      descriptions
row        id=3
column     remedy
value      it's
delivered  the text unchanged, but
           statement texts break at it
advice     double the quotes of a record
           that becomes a statement

3 findings
)");
    EXPECT_EQ(result.status, 1);
}

TEST(CheckCommand, SaysSoWhenThereIsNothing)
{
    const ZavCommand zav;
    const std::string file = zav.database(CLEAN);
    EXPECT_EQ(zav.run("check " + file).output, "no findings\n");
    EXPECT_EQ(zav.run("check --format json " + file).output, "[]\n");
    EXPECT_EQ(zav.run("check " + file).status, 0);
}

TEST(CheckCommand, ListsFindingsAsJson)
{
    const ZavCommand zav;
    const std::string file = zav.database(CLEAN + "UPDATE descriptions SET remedy=NULL");
    EXPECT_EQ(zav.run("check --format json " + file).output, R"([
  {
    "finding": "null",
    "table": "descriptions",
    "row": "id=1",
    "column": "remedy",
    "value": "NULL",
    "delivered": "\"n/a\"",
    "advice": "write '' if there is no text"
  }
]
)");
}

TEST(CheckCommand, TellsAnUnreadableFileFromABadOne)
{
    const ZavCommand zav;
    const std::string text = zav.file("text");
    zav.shell("printf '%2000s' x >" + text);
    const CommandResult noDatabase = zav.run("check " + text);
    EXPECT_EQ(noDatabase.output, "");
    EXPECT_EQ(noDatabase.errors, "zav: " + text + ": cannot be read: file is not a database\n");
    EXPECT_EQ(noDatabase.status, 3);
    EXPECT_EQ(zav.run("check /nowhere.db").status, 3);
    EXPECT_EQ(zav.run("check :memory:").status, 3);
}

TEST(CheckCommand, ReportsADamagedTable)
{
    const ZavCommand zav;
    const std::string file = zav.database(CLEAN);
    const int pages = std::stoi(zav.shell("stat -c %s " + file).output) / 4096;
    ASSERT_GT(pages, 2);
    zav.shell("dd if=/dev/zero of=" + file + " bs=4096 seek=1 count=" + std::to_string(pages - 1) +
              " conv=notrunc");
    const CommandResult result = zav.run("check " + file);
    EXPECT_EQ(result.errors,
              "zav: " + file + ": cannot be read: database disk image is malformed\n");
    EXPECT_EQ(result.status, 3);
}

TEST(CheckCommand, FindsWhatTheSampleDoesNotKnow)
{
    const ZavCommand zav;
    const std::string file = zav.database();
    zav.shell("sqlite3 -bail " + file + " <" ZAV_SOURCE_DIR "/db/sample.sql");
    const CommandResult result =
        zav.shell("zav check --format csv " + file + " | cut -d, -f1 | sort -u");
    EXPECT_EQ(result.output, "finding\nnull\n");
}

TEST(CheckCommand, LeavesTheFileAsItIs)
{
    const ZavCommand zav;
    const std::string file = zav.database(CLEAN);
    const std::string before = contentOf(file);
    zav.run("check " + file);
    EXPECT_EQ(contentOf(file), before);
    EXPECT_EQ(zav.shell("ls " + file + "*").output, file + "\n");
}

}  // namespace
