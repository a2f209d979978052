#include <gtest/gtest.h>

#include "support/database.h"
#include "tools/ZavCommand.h"

namespace {

const char* const TEXTS =
    "INSERT INTO descriptions VALUES"
    "(1,12,1,'a','','','',''),(2,12,2,'b','','','',''),(3,70000,2,'c','','','','')";

const std::string HEADER =
    "id,id_fault_type,id_language,name,short_description,description,comment,remedy\r\n";

TEST(TextsCommand, ShowsAllTextsInEveryFormat)
{
    const ZavCommand zav;
    const std::string file = zav.database(
        "INSERT INTO descriptions VALUES"
        "(1,12,3,'n','s','d',NULL,'r')");
    EXPECT_EQ(
        zav.run("texts " + file).output,
        "id  id fault type  alias  type  id language  name  short description  description  comment"
        "  remedy\n"
        "--  -------------  -----  ----  -----------  ----  -----------------  -----------  -------"
        "  ------\n"
        " 1             12                         3  n     s                  d            n/a    "
        "  r\n");
    EXPECT_EQ(zav.run("texts --format csv " + file).output, HEADER + "1,12,3,n,s,d,n/a,r\r\n");
    EXPECT_EQ(zav.run("texts --format json " + file).output, R"([
  {
    "id": 1,
    "id_fault_type": 12,
    "id_language": 3,
    "name": "n",
    "short_description": "s",
    "description": "d",
    "comment": "n/a",
    "remedy": "r"
  }
]
)");
}

TEST(TextsCommand, NarrowsByCodeAndLanguage)
{
    struct Case {
        std::string options;
        std::string rows;
        int status;
    };
    const std::string lost = "3,0,2,c,,,,\r\n";
    const Case cases[] = {
        {"", "1,12,1,a,,,,\r\n2,12,2,b,,,,\r\n" + lost, 0},
        {"--code 12", "1,12,1,a,,,,\r\n2,12,2,b,,,,\r\n", 0},
        {"--language 2", "2,12,2,b,,,,\r\n" + lost, 0},
        {"--code 12 --language 2", "2,12,2,b,,,,\r\n", 0},
        {"--code 70000", lost, 0},
        {"--code 70000 --code 12", "1,12,1,a,,,,\r\n2,12,2,b,,,,\r\n" + lost, 0},
        {"--code 12 --language 1 --language 7", "1,12,1,a,,,,\r\n", 0},
        {"--code 9 --code 12 --language 2", "2,12,2,b,,,,\r\n", 0},
        {"--code 13", "", 1},
        {"--code 4294967295", "", 1},
        {"--language 3", "", 1},
        {"--code 4294967296", "", 2},
        {"--language 65536", "", 2},
    };
    const ZavCommand zav;
    const std::string file = zav.database(TEXTS);
    for (const Case& row : cases) {
        const CommandResult result = zav.run("texts --format csv " + row.options + " " + file);
        EXPECT_EQ(result.output, row.status == 2 ? "" : HEADER + row.rows) << row.options;
        EXPECT_EQ(result.status, row.status) << row.options;
    }
}

TEST(TextsCommand, SaysWhatIsNotThere)
{
    struct Case {
        std::string options;
        std::string missing;
    };
    const Case cases[] = {
        {"--code 14", "the code 14"},
        {"--language 3", "the language 3"},
        {"--code 13 --language 1", "the code 13 and the language 1"},
        {"--code 15 --code 14 --language 1 --language 2",
         "the code 14 or 15 and the language 1 or 2"},
        {"--stored --code 14", "the code 14"},
    };
    const ZavCommand zav;
    const std::string file =
        zav.database("INSERT INTO descriptions(id_fault_type, id_language) VALUES(12,1),(13,2)");
    for (const Case& row : cases) {
        const CommandResult result = zav.run("texts " + row.options + " " + file);
        EXPECT_EQ(result.errors, "zav: " + file + ": no text has " + row.missing + "\n");
        EXPECT_EQ(result.status, 1) << row.options;
    }
    EXPECT_EQ(zav.run("texts --code 13 --language 2 " + file).errors, "");
}

const char* const WITH_FAULT_TYPES =
    "INSERT INTO fault_type_definition VALUES(12,'E12',NULL,0,0);"
    "INSERT INTO descriptions VALUES(1,12,1,'a','\\N','',NULL,''),(2,-1,70000,x'00ff','','','','')";

TEST(TextsCommand, ShowsAliasAndTypeOfTheFaultType)
{
    const ZavCommand zav;
    const std::string file = zav.database(WITH_FAULT_TYPES);
    EXPECT_EQ(zav.run("texts " + file).output,
              "id  id fault type  alias  type  id language  name  short description  description  "
              "comment  remedy\n"
              "--  -------------  -----  ----  -----------  ----  -----------------  -----------  "
              "-------  ------\n"
              " 1             12  E12    n/a             1  a     \\N                              "
              "n/a\n"
              " 2          65535                         0\n");
    EXPECT_EQ(zav.run("texts --format csv --columns name,type,alias " + file).output,
              "name,type,alias\r\n"
              "a,n/a,E12\r\n"
              ",,\r\n");
}

TEST(TextsCommand, ShowsStoredValues)
{
    const ZavCommand zav;
    const std::string file = zav.database(WITH_FAULT_TYPES);
    const std::string texts = "texts --stored " + file + " ";
    EXPECT_EQ(
        zav.run(texts + "--columns id_fault_type,alias,type,id_language,short_description,comment")
            .output,
        "id fault type  alias  type  id language  short description  comment\n"
        "-------------  -----  ----  -----------  -----------------  -------\n"
        "           12  E12    NULL            1  \\N                 NULL\n"
        "           -1  NULL   NULL        70000\n");
    EXPECT_EQ(zav.run(texts + "--format csv --code 12").output,
              HEADER + "1,12,1,a,\\\\N,,\\N,\r\n");
    EXPECT_EQ(zav.run(texts + "--format csv --language 5 --language 1 --columns id").output,
              "id\r\n1\r\n");
    EXPECT_EQ(
        zav.run(texts + "--format json --columns comment,id_fault_type,type --code 12").output,
        "[\n  {\n    \"comment\": null,\n    \"id_fault_type\": 12,\n    \"type\": null\n  }\n]\n");
}

TEST(TextsCommand, DimsNullOnATerminal)
{
    if (!ZavCommand::canOpenTerminal()) {
        GTEST_SKIP() << "no pseudo-terminals here";
    }
    const ZavCommand zav;
    runSql(zav.database(WITH_FAULT_TYPES), "UPDATE descriptions SET name='NULL' WHERE id=1");
    EXPECT_EQ(zav.runOnTerminal(80, "texts --stored --code 12 --columns name,comment,id " +
                                        zav.file("faults.db"))
                  .output,
              "\x1b[1mname\x1b[0m  \x1b[1mcomment\x1b[0m  \x1b[1mid\x1b[0m\n"
              "----  -------  --\n"
              "NULL  \x1b[2mNULL\x1b[0m      1\n");
}

TEST(TextsCommand, EmptyTableIsNoFailure)
{
    const ZavCommand zav;
    const CommandResult result = zav.run("texts --format csv " + zav.database());
    EXPECT_EQ(result.output, HEADER);
    EXPECT_EQ(result.status, 0);
}

TEST(TextsCommand, ReportsAMissingTable)
{
    const ZavCommand zav;
    const std::string file = zav.database("DROP TABLE descriptions");
    const std::string texts = "texts " + file;
    const std::string errors = "zav: " + file + ": cannot be read: no such table: descriptions\n";
    for (const std::string options : {"", " --code 1"}) {
        const CommandResult result = zav.run(texts + options);
        EXPECT_EQ(result.errors, errors);
        EXPECT_EQ(result.status, 3);
    }
}

}  // namespace
