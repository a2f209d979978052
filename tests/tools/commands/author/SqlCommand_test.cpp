#include <gtest/gtest.h>

#include "support/database.h"
#include "tools/ZavCommand.h"

namespace {

const char* const ROWS =
    "INSERT INTO fault_type_definition VALUES(12,'E012','it''s',0,3),(7,'','',1,2);"
    "INSERT INTO descriptions VALUES(7,12,2,'Overheat','Too hot','','','Cool down')";

/// All of both tables, as SQL literals.
std::string dump(const ZavCommand& zav, const std::string& file)
{
    return zav
        .shell("sqlite3 -cmd '.mode quote' " + file +
               " 'SELECT * FROM fault_type_definition ORDER BY 1; "
               "SELECT * FROM descriptions ORDER BY 1'")
        .output;
}

/// Runs the statements for a file on a new one with the empty tables, or with further SQL.
std::string remade(const ZavCommand& zav, const std::string& file, const std::string& statement,
                   const std::string& sql = "")
{
    const std::string copy = makeDatabase(zav.file("copy.db"), sql);
    const CommandResult result =
        zav.shell("zav sql " + file + " " + statement + " | sqlite3 -bail " + copy);
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.errors, "");
    EXPECT_EQ(result.status, 0);
    return dump(zav, copy);
}

TEST(SqlCommand, WritesAnInsertAndTheKeyOfEveryRow)
{
    const ZavCommand zav;
    const CommandResult result = zav.run("sql " + zav.database(ROWS) + " insert");
    EXPECT_EQ(result.output, R"(BEGIN;
INSERT INTO fault_type_definition('code','alias','type','bug','clear_after_cycle_nr') VALUES(null,'','',1,2);
UPDATE fault_type_definition SET 'code'=7 WHERE rowid=last_insert_rowid();
INSERT INTO fault_type_definition('code','alias','type','bug','clear_after_cycle_nr') VALUES(null,'E012','it''s',0,3);
UPDATE fault_type_definition SET 'code'=12 WHERE rowid=last_insert_rowid();
INSERT INTO descriptions('id','id_fault_type','id_language','name','short_description','description','comment','remedy') VALUES(null,12,2,'Overheat','Too hot','','','Cool down');
UPDATE descriptions SET 'id'=7 WHERE rowid=last_insert_rowid();
COMMIT;
)");
    EXPECT_EQ(result.errors, "");
    EXPECT_EQ(result.status, 0);
}

TEST(SqlCommand, WritesAnUpdateWithItsKeyForEveryRow)
{
    const ZavCommand zav;
    const CommandResult result = zav.run("sql " + zav.database(ROWS) + " update --table all");
    EXPECT_EQ(result.output, R"(BEGIN;
UPDATE fault_type_definition SET 'alias'='','type'='','bug'=1,'clear_after_cycle_nr'=2 WHERE code=7;
UPDATE fault_type_definition SET 'alias'='E012','type'='it''s','bug'=0,'clear_after_cycle_nr'=3 WHERE code=12;
UPDATE descriptions SET 'id_fault_type'=12,'id_language'=2,'name'='Overheat','short_description'='Too hot','description'='','comment'='','remedy'='Cool down' WHERE id=7;
COMMIT;
)");
}

TEST(SqlCommand, WritesOneTableOnly)
{
    const ZavCommand zav;
    const std::string file = zav.database(ROWS);
    EXPECT_EQ(zav.run("sql --table descriptions " + file + " insert").output,
              "BEGIN;\n"
              "INSERT INTO descriptions('id','id_fault_type','id_language','name',"
              "'short_description','description','comment','remedy') "
              "VALUES(null,12,2,'Overheat','Too hot','','','Cool down');\n"
              "UPDATE descriptions SET 'id'=7 WHERE rowid=last_insert_rowid();\n"
              "COMMIT;\n");
    runSql(file, "DROP TABLE descriptions");
    EXPECT_EQ(zav.run("sql --table fault_type_definition " + file + " update").status, 0);
}

TEST(SqlCommand, RemakesTheSample)
{
    const ZavCommand zav;
    const std::string file = zav.database();
    ASSERT_EQ(zav.shell("sqlite3 -bail " + file + " <'" ZAV_SOURCE_DIR "/db/sample.sql'").errors,
              "");
    // What the library delivers for a NULL is all that its statements can say.
    runSql(file,
           "UPDATE fault_type_definition SET bug=ifnull(bug,0), type=ifnull(type,'n/a'),"
           "  clear_after_cycle_nr=ifnull(clear_after_cycle_nr,0);"
           "UPDATE descriptions SET comment=ifnull(comment,'n/a'), remedy=ifnull(remedy,'n/a')");
    const std::string expected = dump(zav, file);
    EXPECT_GT(expected.size(), 10000U);
    EXPECT_EQ(remade(zav, file, "insert"), expected);
}

/// Adds a row to each table, with an SQL expression as every text.
std::string rowsWith(const std::string& text)
{
    const std::string twoTexts = text + "," + text;
    return "INSERT INTO fault_type_definition VALUES(NULL," + twoTexts +
           ",4294967295,65535);"
           "INSERT INTO descriptions VALUES(NULL,65535,65535," +
           twoTexts + "," + twoTexts + "," + text + ")";
}

TEST(SqlCommand, RemakesTextsThatAreHardToWrite)
{
    const char* const texts[] = {
        "''''",
        "''''''",
        "'it''s, ''quoted'''",
        "'x''); DROP TABLE descriptions; --'",
        "'n/a'",
        "'back\\slash, tab\t, \"double\"'",
        "'two' || char(10) || 'lines'",
        "char(10) || '.quit' || char(10) || ';' || char(10) || 'go' || char(10) || '/' || char(10)",
        "'carriage' || char(13,10) || 'return' || char(13)",
        "char(27) || '[31mred'' '",
        "char(155) || '31m' || char(8238)",
        "CAST(x'ff27fe' AS TEXT)",
        "'Größe 漢字 👍'",
    };
    const ZavCommand zav;
    const std::string file = zav.database();
    for (const std::string text : texts) {
        runSql(file, rowsWith(text));
    }
    const std::string expected = dump(zav, file);
    EXPECT_EQ(remade(zav, file, "insert"), expected);
}

TEST(SqlCommand, KeepsKeysInAnyOrderAndWithGaps)
{
    const ZavCommand zav;
    const std::string file = zav.database(
        "DROP TABLE fault_type_definition;"
        "CREATE TABLE fault_type_definition(code,alias,type,bug,clear_after_cycle_nr);"
        "INSERT INTO fault_type_definition VALUES"
        "(4294967295,'d','',0,0),(3,'c','',0,0),(0,'a','',0,0),(2,'b','',0,0)");
    EXPECT_EQ(remade(zav, file, "insert"),
              "0,'a','',0,0\n2,'b','',0,0\n3,'c','',0,0\n4294967295,'d','',0,0\n");
}

TEST(SqlCommand, UpdatesEachRowAlone)
{
    const ZavCommand zav;
    const std::string file = zav.database(ROWS);
    EXPECT_EQ(remade(zav, file, "update",
                     "INSERT INTO fault_type_definition(code) VALUES(7),(12),(99);"
                     "INSERT INTO descriptions(id) VALUES(7),(99)"),
              "7,'','',1,2\n"
              "12,'E012','it''s',0,3\n"
              "99,NULL,NULL,NULL,NULL\n"
              "7,12,2,'Overheat','Too hot','','','Cool down'\n"
              "99,NULL,NULL,NULL,NULL,NULL,NULL,NULL\n");
}

TEST(SqlCommand, WarnsOfWhatTheLibraryDoesNotTell)
{
    const ZavCommand zav;
    const std::string file = zav.database(
        "INSERT INTO fault_type_definition VALUES(1,NULL,'',0,70000);"
        "INSERT INTO descriptions VALUES(1,1,1,'','','','',NULL)");
    const CommandResult all = zav.run("sql " + file + " update");
    EXPECT_EQ(all.errors,
              "[ERROR] SQL3::printError() casting value \"70000\", typeid=t\n"
              "zav: warning: " +
                  file +
                  ": the statements differ from the file in 3 places; zav check lists them\n");
    EXPECT_EQ(all.status, 0);
    EXPECT_EQ(zav.run("sql --table descriptions " + file + " update").errors,
              "zav: warning: " + file +
                  ": the statements differ from the file in 1 place; zav check lists them\n");
}

TEST(SqlCommand, WritesNothingOfAFileThatItCannotReadToTheEnd)
{
    const ZavCommand zav;
    const std::string file = zav.database(std::string(ROWS) + ";DROP TABLE descriptions");
    const CommandResult result = zav.run("sql " + file + " insert");
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.status, 3);
}

TEST(SqlCommand, CountsTheLossesOfALongTable)
{
    const ZavCommand zav;
    const std::string file = zav.database(
        "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM n WHERE i<3000) "
        "INSERT INTO fault_type_definition SELECT i,NULL,'t',0,0 FROM n");
    EXPECT_EQ(zav.run("sql " + file + " update").errors,
              "zav: warning: " + file +
                  ": the statements differ from the file in 3000 places; zav check lists them\n");
}

}  // namespace
