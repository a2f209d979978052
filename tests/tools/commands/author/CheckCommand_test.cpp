#include <gtest/gtest.h>

#include "support/database.h"
#include "tools/ZavCommand.h"

namespace {

/// One fault type with its texts in one language, nothing surprising about them.
const std::string CLEAN =
    "INSERT INTO fault_type_definition VALUES(1,'a','b',0,0);"
    "INSERT INTO descriptions VALUES(1,1,1,'n','s','d','c','r');";

/// Runs a line of shell in the folder of the database faults.db.
CommandResult inFolder(const ZavCommand& zav, const std::string& line)
{
    return zav.shell("cd " + zav.file("") + "; " + line);
}

TEST(CheckCommand, SaysSoWhenThereIsNothing)
{
    const ZavCommand zav;
    zav.database(CLEAN);
    struct Case {
        std::string options;
        std::string output;
    };
    const Case cases[] = {
        {"", "faults.db: no findings\n"},
        {"--all", "faults.db: no findings\n"},
        {"--format json", "[]\n"},
        {"--format csv",
         "file,kind,severity,table,key_column,key,column,value,delivered,message\r\n"},
    };
    for (const Case& row : cases) {
        const CommandResult result = inFolder(zav, "zav check faults.db " + row.options);
        EXPECT_EQ(result.output, row.output) << row.options;
        EXPECT_EQ(result.errors, "") << row.options;
        EXPECT_EQ(result.status, 0) << row.options;
    }
}

/// Ten texts, of which so many have no remedy.
std::string missingRemedies(int count)
{
    return CLEAN +
           "WITH RECURSIVE ids(i) AS (SELECT 2 UNION ALL SELECT i+1 FROM ids WHERE i<10) "
           "INSERT INTO descriptions SELECT i,1,i,'n'||i,'s','d','c','r' FROM ids;"
           "UPDATE descriptions SET remedy=NULL WHERE id<=" +
           std::to_string(count) + ";";
}

TEST(CheckCommand, PutsFindingsOfOneKindTableAndColumnIntoOneLine)
{
    struct Case {
        int count;
        std::string place;
        std::string rows;
        std::string summary;
    };
    const Case cases[] = {
        {1, "descriptions id=1, remedy", "NULL", "1 note"},
        {2, "descriptions, remedy", "2 in all (id=1 NULL, id=2 NULL)", "2 notes"},
        {3, "descriptions, remedy", "3 in all (id=1 NULL, id=2 NULL, id=3 NULL)", "3 notes"},
        {10, "descriptions, remedy", "10 in all (id=1 NULL, id=2 NULL, id=3 NULL and 7 more)",
         "10 notes"},
    };
    for (const Case& row : cases) {
        const ZavCommand zav;
        zav.database(missingRemedies(row.count));
        EXPECT_EQ(inFolder(zav, "zav check faults.db").output,
                  "faults.db: " + row.place + ": note: " + row.rows +
                      ": reads as \"n/a\", for what is not known or not there; write '' to show "
                      "nothing [null]\n"
                      "faults.db: " +
                      row.summary + "\n");
    }
}

TEST(CheckCommand, KeepsApartWhatDiffersInKindTableOrColumn)
{
    const ZavCommand zav;
    zav.database(CLEAN +
                 "UPDATE descriptions SET remedy=' it''s', comment='it''s';"
                 "UPDATE fault_type_definition SET alias='it''s'");
    EXPECT_EQ(inFolder(zav, "zav check faults.db | cut -d: -f1-3 | sort").output,
              "faults.db: 4 notes\n"
              "faults.db: descriptions id=1, comment: note\n"
              "faults.db: descriptions id=1, remedy: note\n"
              "faults.db: descriptions id=1, remedy: note\n"
              "faults.db: fault_type_definition code=1, alias: note\n");
}

TEST(CheckCommand, SaysWhatAKindMeansWhereItsFindingsDiffer)
{
    const ZavCommand zav;
    zav.database(missingRemedies(0) + "UPDATE descriptions SET id_language=-id WHERE id<3");
    EXPECT_EQ(inFolder(zav, "zav check --only out-of-range faults.db").output,
              "faults.db: descriptions, id_language: error: 2 in all (id=1 -1, id=2 -2): "
              "the number does not fit its field [out-of-range]\n"
              "faults.db: 2 errors\n");
}

/// Errors, a warning and notes, which are found in another order.
const std::string ALL_SEVERITIES =
    CLEAN +
    "UPDATE fault_type_definition SET type=NULL, bug=-1;"
    "UPDATE descriptions SET comment=NULL, id_fault_type=1, id_language=65536;"
    "DROP INDEX descriptions_id_fault_type";

TEST(CheckCommand, PutsErrorsFirstAndNotesLast)
{
    const ZavCommand zav;
    zav.database(ALL_SEVERITIES);
    for (const std::string options : {"", "--all"}) {
        EXPECT_EQ(inFolder(zav, "zav check faults.db " + options + " | cut -d: -f2,3").output,
                  " fault_type_definition code=1, bug: error\n"
                  " descriptions id=1, id_language: error\n"
                  " descriptions, id_fault_type: warning\n"
                  " fault_type_definition code=1, type: note\n"
                  " descriptions id=1, comment: note\n"
                  " 2 errors, 1 warning, 2 notes\n")
            << options;
    }
}

TEST(CheckCommand, EndsWith1FromTheChosenSeverityOn)
{
    struct Case {
        std::string sql;
        std::string options;
        int status;
    };
    const std::string note = "UPDATE descriptions SET remedy=NULL";
    const std::string warning = "DROP INDEX descriptions_id_fault_type";
    const std::string error = "UPDATE descriptions SET id_language=-1";
    const Case cases[] = {
        {note, "", 0},
        {note, "--fail-on note", 1},
        {note, "--fail-on note --ignore null", 0},
        {note, "--fail-on note --only quote", 0},
        {warning, "", 1},
        {warning, "--fail-on warning", 1},
        {warning, "--fail-on error", 0},
        {warning, "--ignore missing-index", 0},
        {warning, "--ignore missing-text", 1},
        {warning, "--only null --only missing-index", 1},
        {warning, "--only null --only quote", 0},
        {error, "--fail-on error", 1},
        {error, "--ignore missing-text --ignore out-of-range", 0},
    };
    for (const Case& row : cases) {
        const ZavCommand zav;
        const std::string file = zav.database(CLEAN + row.sql);
        EXPECT_EQ(zav.run("check " + row.options + " " + file).status, row.status)
            << row.sql << ' ' << row.options;
    }
}

TEST(CheckCommand, CountsNoFindingThatIsLeftOut)
{
    const ZavCommand zav;
    zav.database(ALL_SEVERITIES);
    EXPECT_EQ(inFolder(zav, "zav check faults.db --only null --all | tail -1").output,
              "faults.db: 2 notes\n");
    EXPECT_EQ(inFolder(zav, "zav check faults.db --ignore null | tail -1").output,
              "faults.db: 2 errors, 1 warning\n");
}

TEST(CheckCommand, RefusesAnUnknownKindAndNamesTheNearest)
{
    const ZavCommand zav;
    for (const std::string option : {"--ignore", "--only"}) {
        const CommandResult result = zav.run("check f.db " + option + " mising-text");
        EXPECT_EQ(result.errors, "zav: " + option +
                                     ": \"mising-text\" is no kind of finding; the nearest is "
                                     "\"missing-text\"\nzav: see zav check --help\n");
        EXPECT_EQ(result.status, 2);
    }
}

TEST(CheckCommand, ChecksTheLanguagesThatAreAskedFor)
{
    const ZavCommand zav;
    zav.database(CLEAN);
    struct Case {
        std::string languages;
        std::string output;
    };
    const std::string missing =
        ": 1 of 1 fault types have no text in this language: 1; add them [missing-language]\n";
    const Case cases[] = {
        {"1", "faults.db: no findings\n"},
        {"2",
         "faults.db: descriptions, id_language: warning: 2" + missing + "faults.db: 1 warning\n"},
        {"1,65535", "faults.db: descriptions, id_language: warning: 65535" + missing +
                        "faults.db: 1 warning\n"},
    };
    for (const Case& row : cases) {
        EXPECT_EQ(inFolder(zav, "zav check --languages " + row.languages + " faults.db").output,
                  row.output);
    }
    EXPECT_EQ(zav.run("check f.db --languages 1,x").errors,
              "zav: --languages: \"x\" is no number from 0 to 65535\nzav: see zav check --help\n");
}

TEST(CheckCommand, ChecksEachFileAndEndsAsTheWorst)
{
    const ZavCommand zav;
    zav.database(CLEAN);
    ASSERT_EQ(inFolder(zav, "cp faults.db bad.db; touch empty.db").status, 0);
    runSql(zav.file("bad.db"), "DROP INDEX descriptions_id_fault_type");
    const CommandResult result = inFolder(zav, "zav check empty.db faults.db bad.db faults.db");
    EXPECT_EQ(result.output,
              "empty.db: error: cannot be read: the file is empty [unreadable]\n"
              "empty.db: 1 error\n"
              "faults.db: no findings\n"
              "bad.db: descriptions, id_fault_type: warning: getDescriptionsByFC() reads the whole "
              "table; CREATE INDEX \"descriptions_id_fault_type\" ON \"descriptions\" "
              "(\"id_fault_type\"); [missing-index]\n"
              "bad.db: 1 warning\n"
              "faults.db: no findings\n");
    EXPECT_EQ(result.errors, "");
    EXPECT_EQ(result.status, 3);
    EXPECT_EQ(inFolder(zav, "zav check faults.db bad.db faults.db").status, 1);
    EXPECT_EQ(inFolder(zav, "zav check faults.db faults.db").status, 0);
}

TEST(CheckCommand, NoLineIsLongerThan400BytesBesideTheFile)
{
    const ZavCommand zav;
    const std::string file =
        zav.database(CLEAN +
                     "UPDATE descriptions SET name=replace(hex(zeroblob(5000)),'0','ü') || '''',"
                     "  remedy='\n' || replace(hex(zeroblob(5000)),'0',char(27)) || '{' || "
                     "  replace(hex(zeroblob(5000)),'0','n') || '}';"
                     "INSERT INTO descriptions VALUES(2,1,2,'n2','s','d','c','it''s %d %s');");
    const std::string columns = "\"" + std::string(500, 'x') + "\", alias, code";
    runSql(file, "DROP TABLE fault_type_definition; CREATE TABLE fault_type_definition(" + columns +
                     "); INSERT INTO fault_type_definition(code) "
                     "VALUES(replace(hex(zeroblob(500)),'0','y'))");
    for (const std::string options : {"", "--all"}) {
        const CommandResult result = zav.shell("zav check " + options + " " + file + " | sed 's#^" +
                                               file + ": ##' >" + zav.file("lines") +
                                               "; LC_ALL=C awk '{ if (length($0) > most) most = "
                                               "length($0) } END { print most }' " +
                                               zav.file("lines"));
        EXPECT_LE(std::stoi(result.output), 400);
        EXPECT_GT(std::stoi(result.output), 390);
    }
    EXPECT_EQ(contentOf(zav.file("lines")).find('\x1b'), std::string::npos);
}

TEST(CheckCommand, WritesWholeValuesAsJson)
{
    const ZavCommand zav;
    zav.database(CLEAN +
                 "UPDATE descriptions SET id_language=65536, name=x'ff41', comment=NULL,"
                 "  remedy=replace(hex(zeroblob(50)),'0','x') || '''';"
                 "UPDATE fault_type_definition SET clear_after_cycle_nr=2.5, bug='7x'");
    const std::string text(100, 'x');
    EXPECT_EQ(
        inFolder(zav, "zav check --format json faults.db").output,
        R"([
  {
    "file": "faults.db",
    "kind": "inexact-number",
    "severity": "error",
    "table": "fault_type_definition",
    "key_column": "code",
    "key": 1,
    "column": "bug",
    "value": "7x",
    "delivered": 7,
    "message": "\"7x\": reads as 7; write a whole number from 0 to 4294967295"
  },
  {
    "file": "faults.db",
    "kind": "inexact-number",
    "severity": "error",
    "table": "fault_type_definition",
    "key_column": "code",
    "key": 1,
    "column": "clear_after_cycle_nr",
    "value": 2.5,
    "delivered": 2,
    "message": "2.5: reads as 2; write a whole number from 0 to 65535"
  },
  {
    "file": "faults.db",
    "kind": "out-of-range",
    "severity": "error",
    "table": "descriptions",
    "key_column": "id",
    "key": 1,
    "column": "id_language",
    "value": 65536,
    "delivered": 0,
    "message": "65536: reads as 0; write a whole number from 0 to 65535"
  },
  {
    "file": "faults.db",
    "kind": "not-utf8",
    "severity": "warning",
    "table": "descriptions",
    "key_column": "id",
    "key": 1,
    "column": "name",
    "value": "�A",
    "value_hex": "ff41",
    "delivered": "�A",
    "delivered_hex": "ff41",
    "message": "x'ff41': the bytes are delivered unchanged; store the text in UTF-8"
  },
  {
    "file": "faults.db",
    "kind": "null",
    "severity": "note",
    "table": "descriptions",
    "key_column": "id",
    "key": 1,
    "column": "comment",
    "value": null,
    "delivered": "n/a",
    "message": "NULL: reads as \"n/a\", for what is not known or not there; write '' to show nothing"
  },
  {
    "file": "faults.db",
    "kind": "quote",
    "severity": "note",
    "table": "descriptions",
    "key_column": "id",
    "key": 1,
    "column": "remedy",
    "value": ")" +
            text + R"('",
    "delivered": ")" +
            text + R"('",
    "message": "\")" +
            std::string(60, 'x') +
            R"(...\": delivered unchanged, but the library's statement texts break at the quote; double it there"
  }
]
)");
}

TEST(CheckCommand, WritesWhatIsAboutNoCellAsJson)
{
    const ZavCommand zav;
    zav.database(
        "DROP TABLE descriptions; CREATE TABLE descriptions(id);"
        "INSERT INTO descriptions VALUES(NULL)");
    EXPECT_EQ(inFolder(zav, "zav check --format json --only null faults.db | grep key").output,
              "    \"key_column\": null,\n    \"key\": null,\n");
    EXPECT_EQ(inFolder(zav, "zav check --format json nowhere.db").output, R"([
  {
    "file": "nowhere.db",
    "kind": "unreadable",
    "severity": "error",
    "table": null,
    "key_column": null,
    "key": null,
    "column": null,
    "value": null,
    "delivered": null,
    "message": "cannot be read: unable to open database file"
  }
]
)");
}

TEST(CheckCommand, WritesWholeValuesAsCsv)
{
    const ZavCommand zav;
    zav.database(CLEAN +
                 "UPDATE descriptions SET name=NULL, comment=CAST(x'ff2c' AS TEXT),"
                 "  remedy=replace(hex(zeroblob(50)),'0','x') || '''';"
                 "DROP INDEX descriptions_id_fault_type");
    const std::string text = std::string(100, 'x') + "'";
    EXPECT_EQ(
        inFolder(zav, "zav check --format csv faults.db").output,
        "file,kind,severity,table,key_column,key,column,value,delivered,message\r\n"
        "faults.db,null,note,descriptions,id,1,name,\\N,n/a,\"NULL: reads as \"\"n/a\"\", for what "
        "is not known or not there; write '' to show nothing\"\r\n"
        "faults.db,not-utf8,warning,descriptions,id,1,comment,\"\xff,\",\"\xff,\","
        "\"\"\"\xEF\xBF\xBD,\"\": the bytes are delivered unchanged; store the text in UTF-8\"\r\n"
        "faults.db,quote,note,descriptions,id,1,remedy," +
            text + "," + text + ",\"\"\"" + std::string(60, 'x') +
            "...\"\": delivered unchanged, but the library's statement texts break at the quote; "
            "double it there\"\r\n"
            "faults.db,missing-index,warning,descriptions,\\N,\\N,id_fault_type,\\N,\\N,"
            "\"getDescriptionsByFC() reads the whole table; CREATE INDEX "
            "\"\"descriptions_id_fault_type\"\" ON \"\"descriptions\"\" "
            "(\"\"id_fault_type\"\");\"\r\n");
}

TEST(CheckCommand, TellsNullFromTheTextsInCsv)
{
    const ZavCommand zav;
    zav.database(CLEAN + R"(
        UPDATE descriptions SET name=NULL, comment='\N''';
        UPDATE fault_type_definition SET alias='\N';
        INSERT INTO fault_type_definition VALUES(2,'\N','b',0,0))");
    EXPECT_EQ(inFolder(zav,
                       "zav check --format csv --only null --only quote --only duplicate-alias "
                       "faults.db | cut -d, -f2,7-9")
                  .output,
              "kind,column,value,delivered\n"
              R"(duplicate-alias,alias,\\N,\\N
null,name,\N,n/a
quote,comment,\N',\N'
)");
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
            zav.shell("zav check " + file + " | sed -nE 's/.*; ((ALTER|CREATE).*;) .*/\\1/p'")
                .output;
        runSql(file, advice);
        EXPECT_EQ(zav.run("check " + file).output, file + ": no findings\n") << damage;
    }
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

TEST(CheckCommand, ReadsATableOfAsManyColumnsAsSqliteAllows)
{
    constexpr int MOST_COLUMNS = 2000;
    const ZavCommand zav;
    std::string columns =
        "id,id_fault_type,id_language,name,short_description,description,comment,remedy";
    for (int i = 8; i < MOST_COLUMNS; ++i) {
        columns += ",c" + std::to_string(i);
    }
    const std::string file = zav.database(CLEAN);
    runSql(file, "DROP TABLE descriptions; CREATE TABLE descriptions(" + columns +
                     "); CREATE INDEX i ON descriptions(id_fault_type);"
                     "INSERT INTO descriptions(id, id_fault_type) VALUES(7, '1st')");
    const CommandResult result = zav.run("check --only inexact-number --only damaged " + file);
    EXPECT_EQ(result.output, file +
                                 ": descriptions id=7, id_fault_type: error: \"1st\": reads as "
                                 "1; write a whole number from 0 to 65535 [inexact-number]\n" +
                                 file + ": 1 error\n");
}

TEST(CheckCommand, PassesTheSample)
{
    const ZavCommand zav;
    const std::string file = zav.database();
    zav.shell("sqlite3 -bail " + file + " <'" ZAV_SOURCE_DIR "/db/sample.sql'");
    const CommandResult result = zav.run("check " + file);
    EXPECT_EQ(zav.shell("zav check " + file + " | tail -1").output, file + ": 105 notes\n");
    EXPECT_EQ(zav.shell("zav check --ignore null " + file).output, file + ": no findings\n");
    EXPECT_EQ(result.status, 0);
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

/// A check that takes some seconds: there is no end to the rows.
const std::string LONG =
    "DROP TABLE descriptions; CREATE VIEW descriptions AS "
    "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM n WHERE i<3000000) "
    "SELECT max(i) AS id, 1 AS id_fault_type FROM n";

TEST(CheckCommand, ShowsProgressOnATerminalAlone)
{
    const ZavCommand zav;
    const std::string file = zav.database(LONG);
    EXPECT_NE(zav.runOnTerminal(80, "check " + file).output.find("zav: checking " + file + ", "),
              std::string::npos);
    EXPECT_EQ(zav.run("check " + file).errors, "");
}

}  // namespace
