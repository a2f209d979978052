#include <gtest/gtest.h>
#include <sqlite3.h>

#include "support/database.h"
#include "tools/ZavCommand.h"

namespace {

/// @return the content hash of a file.
std::string contentOfFile(const ZavCommand& zav, const std::string& file)
{
    return zav.shell("zav info --format csv " + file + " | sed -n 2p | cut -d, -f3").output;
}

constexpr const char* ROWS =
    "PRAGMA user_version=7;"
    "INSERT INTO fault_type_definition VALUES(1,'E1','error',0,0),(2,'E2','error',0,0),"
    "(3,'E3','error',0,0);"
    "INSERT INTO descriptions VALUES"
    "(1,1,1,'Door','','open','',''),(2,2,1,'Oven','','hot','',''),(3,3,1,'Fan','','off','',''),"
    "(4,1,2,'Door','x','open','y',''),(5,2,2,'Ofen','','hot','',''),"
    "(6,1,1,'Again','','','',''),(7,9,3,'of no fault type','','','','')";

TEST(InfoCommand, SaysWhatAFileIs)
{
    const ZavCommand zav;
    const std::string file = zav.database(ROWS);
    const std::string hash = contentOfFile(zav, file);
    EXPECT_EQ(zav.run("info --source 1 " + file).output,
              "file          " + file +
                  "\n"
                  "release       7\n"
                  "content       " +
                  hash +
                  "fault types   3\n"
                  "texts         7\n"
                  "journal mode  delete\n"
                  "size          20480 bytes\n"
                  "written by    SQLite " SQLITE_VERSION
                  "\n"
                  "\n"
                  "language  with text  without text  same as 1\n"
                  "--------  ---------  ------------  ---------\n"
                  "       1          3             0\n"
                  "       2          2             1          1\n"
                  "       3          0             3          0\n");
    EXPECT_EQ(hash.size(), 65U);
}

TEST(InfoCommand, SaysItInJson)
{
    const ZavCommand zav;
    const std::string file = zav.database(ROWS);
    std::string hash = contentOfFile(zav, file);
    hash.pop_back();
    EXPECT_EQ(zav.run("info --source 2 --format json " + file).output, R"([
  {
    "file": ")" + file + R"(",
    "release": 7,
    "content": ")" + hash + R"(",
    "fault_types": 3,
    "texts": 7,
    "languages": [
      {
        "language": 1,
        "with_text": 3,
        "without_text": 0,
        "same_as_source": 1
      },
      {
        "language": 2,
        "with_text": 2,
        "without_text": 1,
        "same_as_source": null
      },
      {
        "language": 3,
        "with_text": 0,
        "without_text": 3,
        "same_as_source": 0
      }
    ],
    "journal_mode": "delete",
    "size": 20480,
    "sqlite_version": ")" SQLITE_VERSION R"("
  }
]
)");
}

TEST(InfoCommand, WritesALinePerFileAndLanguageAsCsv)
{
    const ZavCommand zav;
    const std::string file = zav.database("PRAGMA user_version=-1");
    std::string hash = contentOfFile(zav, file);
    hash.pop_back();
    EXPECT_EQ(zav.run("info --format csv " + file).output,
              "file,release,content,fault_types,texts,journal_mode,size,sqlite_version,language,"
              "with_text,without_text,same_as_source\r\n" +
                  file + ",-1," + hash + ",0,0,delete,20480," SQLITE_VERSION ",,,,\r\n");
}

TEST(InfoCommand, GoesOnWhereAFileCannotBeRead)
{
    const ZavCommand zav;
    const std::string good = zav.database();
    const std::string bad = zav.file("bad.db");
    setContents(bad, "no database, but long enough for one");
    const CommandResult result = zav.run("info " + bad + " " + zav.file("missing.db") + " " + good);
    EXPECT_EQ(result.output.rfind("file          " + good + "\nrelease       none\n", 0), 0U);
    EXPECT_EQ(result.errors, "zav: " + bad +
                                 ": cannot be read: file is not a database\n"
                                 "zav: " +
                                 zav.file("missing.db") +
                                 ": cannot be opened: No such file or directory\n");
    EXPECT_EQ(result.status, 3);
}

TEST(InfoCommand, SaysWhatIsMissing)
{
    const ZavCommand zav;
    struct Case {
        std::string sql;
        std::string reason;
    };
    const Case cases[] = {
        {"CREATE TABLE other(a)", "no such table: fault_type_definition"},
        {schemaSql() + "DROP TABLE descriptions", "no such table: descriptions"},
        {schemaSql() + "ALTER TABLE descriptions RENAME remedy TO cure",
         "no such column: descriptions.remedy"},
    };
    for (const Case& row : cases) {
        const std::string file = zav.file("odd.db");
        setContents(file, "");
        runSql(file, row.sql);
        EXPECT_EQ(zav.run("info " + file).errors,
                  "zav: " + file + ": cannot be read: " + row.reason + "\n");
    }
}

TEST(InfoCommand, EndsOnAViewWithoutEnd)
{
    const ZavCommand zav;
    const std::string file = zav.database(
        "DROP TABLE descriptions; CREATE VIEW descriptions AS WITH RECURSIVE n(id) AS (SELECT 1 "
        "UNION ALL SELECT id + 1 FROM n) SELECT id, 1 AS id_fault_type, 1 AS id_language, '' AS "
        "name, '' AS short_description, '' AS description, '' AS comment, '' AS remedy FROM n "
        "WHERE id < 0");
    const CommandResult result = zav.run("info " + file);
    EXPECT_EQ(result.errors, "zav: " + file + ": cannot be read: it is damaged; see zav check\n");
    EXPECT_EQ(result.status, 3);
}

TEST(ContentHash, DependsOnTheStoredValuesAlone)
{
    struct Case {
        std::string sql;
        bool isOtherContent;
    };
    const Case cases[] = {
        {"UPDATE descriptions SET id=id+100", false},
        {"CREATE TABLE copy AS SELECT * FROM descriptions ORDER BY id DESC; DELETE FROM "
         "descriptions; INSERT INTO descriptions SELECT * FROM copy; DROP TABLE copy",
         false},
        {"ALTER TABLE descriptions ADD COLUMN own", false},
        {"PRAGMA user_version=9", false},
        {"UPDATE descriptions SET name='door' WHERE id=1", true},
        {"UPDATE descriptions SET name='', short_description='Door' WHERE id=1", true},
        {"UPDATE descriptions SET name='Do', short_description='or' WHERE id=1", true},
        {"UPDATE descriptions SET remedy=NULL WHERE id=1", true},
        {"UPDATE descriptions SET remedy='n/a' WHERE id=1", true},
        {"UPDATE descriptions SET name=name||char(0) WHERE id=1", true},
        {"UPDATE descriptions SET name=CAST(name AS BLOB) WHERE id=1", true},
        {"UPDATE descriptions SET id_language=3 WHERE id=1", true},
        {"UPDATE fault_type_definition SET code=4 WHERE code=3", true},
        {"UPDATE fault_type_definition SET bug=1 WHERE code=3", true},
        {"DELETE FROM descriptions WHERE id=6", true},
        {"INSERT INTO descriptions SELECT 8,id_fault_type,id_language,name,short_description,"
         "description,comment,remedy FROM descriptions WHERE id=6",
         true},
    };
    for (const Case& row : cases) {
        const ZavCommand zav;
        const std::string file = zav.database(ROWS);
        const std::string before = contentOfFile(zav, file);
        runSql(file, row.sql);
        EXPECT_EQ(contentOfFile(zav, file) != before, row.isOtherContent) << row.sql;
        runSql(file, "PRAGMA page_size=1024; VACUUM");
        EXPECT_EQ(contentOfFile(zav, file) != before, row.isOtherContent) << row.sql;
    }
}

TEST(ContentHash, IsThatOfAFileInAnotherEncoding)
{
    const ZavCommand zav;
    const std::string file = zav.database(ROWS);
    const std::string wide = zav.file("wide.db");
    runSql(wide, "PRAGMA encoding='UTF-16'; " + schemaSql() + ROWS);
    EXPECT_EQ(contentOfFile(zav, wide), contentOfFile(zav, file));
}

TEST(ContentHash, IsMadeAsTheDocumentSays)
{
    const ZavCommand zav;
    const std::string file = zav.database(
        std::string(ROWS) +
        "; INSERT INTO descriptions VALUES(8,2,3,'ä''ö',NULL,x'00ff',1.5,'a' || char(0) || 'b')");
    const CommandResult result = zav.shell("'" ZAV_SOURCE_DIR "/tests/docs/block' '" ZAV_SOURCE_DIR
                                           "/docs/database.md' content | python3 - " +
                                           file);
    EXPECT_EQ(result.errors, "");
    EXPECT_EQ(result.output, contentOfFile(zav, file));
}

}  // namespace
