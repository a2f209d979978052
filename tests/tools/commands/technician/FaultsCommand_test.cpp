#include <gtest/gtest.h>

#include "support/database.h"
#include "tools/ZavCommand.h"

namespace {

const char* const TWO_FAULTS =
    "INSERT INTO fault_type_definition VALUES"
    "(12,'E012','error',0,3),(4294967295,'Öl, \"heiß\"','',4294967295,65535)";

TEST(FaultsCommand, ShowsAllFaultTypesAsTable)
{
    const ZavCommand zav;
    const CommandResult result = zav.run("faults " + zav.database(TWO_FAULTS));
    EXPECT_EQ(result.output,
              "      code  alias       type          bug  clear after cycle nr\n"
              "----------  ----------  -----  ----------  --------------------\n"
              "        12  E012        error           0                     3\n"
              "4294967295  Öl, \"heiß\"         4294967295                 65535\n");
    EXPECT_EQ(result.errors, "");
    EXPECT_EQ(result.status, 0);
}

TEST(FaultsCommand, ShowsAllFaultTypesAsJson)
{
    const ZavCommand zav;
    const CommandResult result = zav.run("faults --format json " + zav.database(TWO_FAULTS));
    EXPECT_EQ(result.output, R"([
  {
    "code": 12,
    "alias": "E012",
    "type": "error",
    "bug": 0,
    "clear_after_cycle_nr": 3
  },
  {
    "code": 4294967295,
    "alias": "Öl, \"heiß\"",
    "type": "",
    "bug": 4294967295,
    "clear_after_cycle_nr": 65535
  }
]
)");
    EXPECT_EQ(result.status, 0);
}

TEST(FaultsCommand, ShowsAllFaultTypesAsCsv)
{
    const ZavCommand zav;
    const CommandResult result = zav.run("--format csv faults " + zav.database(TWO_FAULTS));
    EXPECT_EQ(result.output,
              "code,alias,type,bug,clear_after_cycle_nr\r\n"
              "12,E012,error,0,3\r\n"
              "4294967295,\"Öl, \"\"heiß\"\"\",,4294967295,65535\r\n");
    EXPECT_EQ(result.status, 0);
}

TEST(FaultsCommand, ShowsAnEmptyTableInEveryFormat)
{
    const ZavCommand zav;
    const std::string file = zav.database();
    EXPECT_EQ(zav.run("faults " + file).output,
              "code  alias  type  bug  clear after cycle nr\n"
              "----  -----  ----  ---  --------------------\n");
    EXPECT_EQ(zav.run("faults --format json " + file).output, "[]\n");
    EXPECT_EQ(zav.run("faults --format csv " + file).output,
              "code,alias,type,bug,clear_after_cycle_nr\r\n");
    EXPECT_EQ(zav.run("faults " + file).status, 0);
}

TEST(FaultsCommand, ReportsAFileThatIsNotThere)
{
    const ZavCommand zav;
    const CommandResult result = zav.run("faults /nowhere.db");
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.errors, "zav: /nowhere.db: cannot be opened: No such file or directory\n");
    EXPECT_EQ(result.status, 3);
}

TEST(FaultsCommand, ReportsAFileThatIsNoDatabase)
{
    const ZavCommand zav;
    const std::string file = zav.file("text");
    zav.shell("printf '%2000s' x >" + file);
    const CommandResult result = zav.run("faults " + file);
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.errors, "zav: " + file + ": cannot be read: file is not a database\n");
    EXPECT_EQ(result.status, 3);
}

TEST(FaultsCommand, ReportsAMissingTable)
{
    const ZavCommand zav;
    const std::string file = zav.database("DROP TABLE fault_type_definition");
    const CommandResult result = zav.run("faults " + file);
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.errors,
              "zav: " + file + ": cannot be read: no such table: fault_type_definition\n");
    EXPECT_EQ(result.status, 3);
}

TEST(FaultsCommand, KeepsTheLibrarysErrorsOutOfTheOutput)
{
    const ZavCommand zav;
    const std::string file =
        zav.database("INSERT INTO fault_type_definition VALUES(1,'a','b',0,char(27)||'[31m7')");
    const CommandResult result = zav.run("faults --format csv " + file);
    EXPECT_EQ(result.output,
              "code,alias,type,bug,clear_after_cycle_nr\r\n"
              "1,a,b,0,0\r\n");
    EXPECT_EQ(result.errors, "[ERROR] SQL3::printError() casting value \"\\x1b[31m7\", typeid=t\n");
    EXPECT_EQ(result.status, 0);
}

TEST(FaultsCommand, ShowsStoredValuesAndChosenColumns)
{
    const ZavCommand zav;
    const std::string file = zav.database(
        "INSERT INTO fault_type_definition VALUES(-3,NULL,'\\N',-1,1.5),(12,'n/a','',1e300,'x')");
    EXPECT_EQ(zav.run("faults --stored --format json " + file).output, R"([
  {
    "code": -3,
    "alias": null,
    "type": "\\N",
    "bug": -1,
    "clear_after_cycle_nr": 1.5
  },
  {
    "code": 12,
    "alias": "n/a",
    "type": "",
    "bug": 1e+300,
    "clear_after_cycle_nr": "x"
  }
]
)");
    EXPECT_EQ(zav.run("faults --stored --format csv --columns type,alias,code " + file).output,
              "type,alias,code\r\n\\\\N,\\N,-3\r\n,n/a,12\r\n");
    EXPECT_EQ(zav.run("faults --columns alias " + file).output, "alias\n-----\nn/a\nn/a\n");
    EXPECT_EQ(zav.run("faults --columns alias,Code " + file).errors,
              "zav: --columns: \"Code\" is none of code,alias,type,bug,clear_after_cycle_nr\n"
              "zav: see zav faults --help\n");
}

TEST(FaultsCommand, SaysWhichStoredColumnIsMissing)
{
    const ZavCommand zav;
    const std::string file =
        zav.database("ALTER TABLE fault_type_definition RENAME COLUMN bug TO beetle");
    const CommandResult result = zav.run("faults --stored " + file);
    EXPECT_EQ(result.errors,
              "zav: " + file + ": cannot be read: no such column: fault_type_definition.bug\n");
    EXPECT_EQ(result.status, 3);
}

}  // namespace
