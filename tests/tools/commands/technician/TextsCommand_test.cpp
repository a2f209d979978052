#include <gtest/gtest.h>

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
    EXPECT_EQ(zav.run("texts " + file).output,
              "id  id fault type  id language  name  short description  description  comment  "
              "remedy\n"
              "--  -------------  -----------  ----  -----------------  -----------  -------  "
              "------\n"
              " 1             12            3  n     s                  d            n/a      r\n");
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
