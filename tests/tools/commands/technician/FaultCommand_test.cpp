#include <gtest/gtest.h>

#include "support/database.h"
#include "tools/ZavCommand.h"

namespace {

const char* const FAULTS_WITH_TEXTS =
    "INSERT INTO fault_type_definition VALUES(12,'E012','error',0,3),(13,'E013','info',7,0);"
    "INSERT INTO descriptions VALUES"
    "(7,12,1,'Overheat','Too hot','',NULL,'Cool down.\nWait.'),"
    "(8,12,2,'Überhitzung','Zu heiß','','','Abkühlen')";

TEST(FaultCommand, ShowsOneFaultTypeWithItsTexts)
{
    const ZavCommand zav;
    const CommandResult result = zav.run("fault " + zav.database(FAULTS_WITH_TEXTS) + " 12");
    EXPECT_EQ(result.output, R"(code                  12
alias                 E012
type                  error
bug                   0
clear after cycle nr  3

id                 7
id fault type      12
id language        1
name               Overheat
short description  Too hot
description
comment            n/a
remedy             Cool down.
                   Wait.

id                 8
id fault type      12
id language        2
name               Überhitzung
short description  Zu heiß
description
comment
remedy             Abkühlen
)");
    EXPECT_EQ(result.errors, "");
    EXPECT_EQ(result.status, 0);
}

TEST(FaultCommand, ShowsAFaultTypeWithoutTexts)
{
    const ZavCommand zav;
    const std::string file = zav.database(FAULTS_WITH_TEXTS);
    EXPECT_EQ(zav.run("fault " + file + " 13").output,
              "code                  13\n"
              "alias                 E013\n"
              "type                  info\n"
              "bug                   7\n"
              "clear after cycle nr  0\n");
    EXPECT_EQ(zav.run("fault --format json " + file + " 13").output, R"({
  "code": 13,
  "alias": "E013",
  "type": "info",
  "bug": 7,
  "clear_after_cycle_nr": 0,
  "texts": []
}
)");
    EXPECT_EQ(zav.run("fault --format csv " + file + " 13").output,
              "code,alias,type,bug,clear_after_cycle_nr,id,id_fault_type,id_language,name,"
              "short_description,description,comment,remedy\r\n"
              "13,E013,info,7,0,,,,,,,,\r\n");
}

TEST(FaultCommand, NestsTheTextsInJson)
{
    const ZavCommand zav;
    const CommandResult result =
        zav.run("fault --format json " + zav.database(FAULTS_WITH_TEXTS) + " 12");
    EXPECT_EQ(result.output, R"({
  "code": 12,
  "alias": "E012",
  "type": "error",
  "bug": 0,
  "clear_after_cycle_nr": 3,
  "texts": [
    {
      "id": 7,
      "id_fault_type": 12,
      "id_language": 1,
      "name": "Overheat",
      "short_description": "Too hot",
      "description": "",
      "comment": "n/a",
      "remedy": "Cool down.\nWait."
    },
    {
      "id": 8,
      "id_fault_type": 12,
      "id_language": 2,
      "name": "Überhitzung",
      "short_description": "Zu heiß",
      "description": "",
      "comment": "",
      "remedy": "Abkühlen"
    }
  ]
}
)");
}

TEST(FaultCommand, RepeatsTheFaultTypeForEachTextInCsv)
{
    const ZavCommand zav;
    const CommandResult result =
        zav.run("fault --format csv " + zav.database(FAULTS_WITH_TEXTS) + " 12");
    EXPECT_EQ(result.output,
              "code,alias,type,bug,clear_after_cycle_nr,id,id_fault_type,id_language,name,"
              "short_description,description,comment,remedy\r\n"
              "12,E012,error,0,3,7,12,1,Overheat,Too hot,,n/a,\"Cool down.\nWait.\"\r\n"
              "12,E012,error,0,3,8,12,2,Überhitzung,Zu heiß,,,Abkühlen\r\n");
}

TEST(FaultCommand, ReportsAnUnknownCode)
{
    const ZavCommand zav;
    const std::string file = zav.database(FAULTS_WITH_TEXTS);
    const CommandResult result = zav.run("fault " + file + " 14");
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.errors, "zav: " + file + ": no fault type has the code 14\n");
    EXPECT_EQ(result.status, 1);
}

TEST(FaultCommand, ReportsACodeOfSeveralFaultTypes)
{
    const ZavCommand zav;
    const std::string file = zav.database(
        "DROP TABLE fault_type_definition;"
        "CREATE TABLE fault_type_definition(code,alias,type,bug,clear_after_cycle_nr);"
        "INSERT INTO fault_type_definition VALUES(12,'a','',0,0),(12,'b','',0,0)");
    const CommandResult result = zav.run("fault " + file + " 12");
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.errors, "zav: " + file + ": 2 fault types have the code 12\n");
    EXPECT_EQ(result.status, 1);
}

TEST(FaultCommand, TellsAFailedLookupFromAnUnknownCode)
{
    const ZavCommand zav;
    const std::string file = zav.database("DROP TABLE fault_type_definition");
    const CommandResult result = zav.run("fault " + file + " 12");
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.errors,
              "zav: " + file + ": cannot be read: no such table: fault_type_definition\n");
    EXPECT_EQ(result.status, 3);
}

TEST(FaultCommand, FindsTheSmallestAndTheLargestCode)
{
    const ZavCommand zav;
    const std::string file = zav.database(
        "INSERT INTO fault_type_definition VALUES(0,'first','',0,0),(65535,'last','',0,0)");
    EXPECT_EQ(zav.run("fault " + file + " 0").status, 0);
    EXPECT_EQ(zav.run("fault " + file + " 65535").status, 0);
}

TEST(FaultCommand, TakesDigitsForACodeOf16Bits)
{
    const ZavCommand zav;
    const std::string file = zav.database("INSERT INTO fault_type_definition(code) VALUES(8)");
    const std::string fault = "fault " + file + " ";
    EXPECT_EQ(zav.run("fault " + file + " 65536").errors,
              "zav: CODE: \"65536\" is no number from 0 to 65535\n"
              "zav: see zav fault --help\n");
    EXPECT_EQ(zav.run("fault " + file + " ''").errors,
              "zav: CODE|ALIAS: is empty\n"
              "zav: see zav fault --help\n");
    for (const std::string argument : {"65536", "''"}) {
        EXPECT_EQ(zav.run(fault + argument).status, 2) << argument;
    }
    for (const std::string argument : {"0x8", "8.0", "+8", "-1", "' 8'", "eight"}) {
        const CommandResult result = zav.run(fault + argument);
        EXPECT_EQ(result.output, "") << argument;
        EXPECT_EQ(result.status, 1) << "no such alias: " << argument;
    }
    EXPECT_EQ(zav.run("fault " + file + " 010").status, 1) << "decimal, not octal";
}

const char* const ALIASES =
    "INSERT INTO fault_type_definition VALUES"
    "(1,'Door_Open','error',0,0),(2,'door_open','info',0,0),(3,'ÖL_heiß','',0,0),(4,'','',0,0);"
    "INSERT INTO descriptions VALUES"
    "(1,1,1,'Open','','','',''),(2,1,2,'Offen','','',NULL,''),(3,1,3,'x','','','','')";

TEST(FaultCommand, FindsAnAliasAsWrittenOrElseInAnyLetterCase)
{
    struct Case {
        std::string alias;
        std::string codes;
    };
    const Case cases[] = {{"Door_Open", "1"}, {"door_open", "2"},    {"öl_HEIß", "3"},
                          {"ÖL_heiß", "3"},   {"DOOR_OPEN", "1\n2"}, {"DOOR", ""}};
    const ZavCommand zav;
    const std::string file = zav.database(ALIASES);
    for (const Case& row : cases) {
        const CommandResult result = zav.shell("{ zav fault " + file + " " + row.alias +
                                               " --format csv --columns code; echo $? >&2; } | tr "
                                               "-d '\\r' | sed 1d | uniq");
        EXPECT_EQ(result.output, row.codes + (row.codes.empty() ? "" : "\n")) << row.alias;
        EXPECT_EQ(result.errors.back(), '\n');
        EXPECT_EQ(result.errors.substr(result.errors.size() - 2),
                  row.codes.size() == 1 ? "0\n" : "1\n");
    }
}

TEST(FaultCommand, ListsTheFaultTypesOfOneAlias)
{
    const ZavCommand zav;
    const std::string file = zav.database(ALIASES);
    const CommandResult result = zav.run("fault --format csv " + file + " DOOR_OPEN");
    EXPECT_EQ(result.output,
              "code,alias,type,bug,clear_after_cycle_nr\r\n"
              "1,Door_Open,error,0,0\r\n"
              "2,door_open,info,0,0\r\n");
    EXPECT_EQ(result.errors, "zav: " + file + ": 2 fault types have the alias DOOR_OPEN\n");
    EXPECT_EQ(zav.run("fault --format csv --columns name " + file + " DOOR_OPEN").output,
              result.output)
        << "it has no texts";
    EXPECT_EQ(result.status, 1);
}

TEST(FaultCommand, NamesTheNearestAlias)
{
    const ZavCommand zav;
    const std::string file = zav.database(ALIASES);
    CommandResult result = zav.run("fault " + file + " ol_heis");
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.errors,
              "zav: " + file + ": no fault type has the alias ol_heis; the nearest is ÖL_heiß\n");
    EXPECT_EQ(result.status, 1);
    runSql(file, "UPDATE fault_type_definition SET alias=hex(zeroblob(100000))");
    result = zav.run("fault " + file + " E1");
    EXPECT_EQ(result.errors, "zav: " + file + ": no fault type has the alias E1\n");
}

TEST(FaultCommand, NarrowsToLanguagesAndColumns)
{
    const ZavCommand zav;
    const std::string file = zav.database(ALIASES);
    const std::string fault = "fault " + file + " 1 --language 2 --language 1 ";
    EXPECT_EQ(zav.run(fault + "--format csv --columns name,alias,comment").output,
              "name,alias,comment\r\n"
              "Open,Door_Open,\r\n"
              "Offen,Door_Open,n/a\r\n");
    EXPECT_EQ(zav.run(fault + "--columns alias,code").output,
              "alias  Door_Open\n"
              "code   1\n");
    EXPECT_EQ(zav.run(fault + "--columns name").output,
              "name  Open\n"
              "\n"
              "name  Offen\n");
    EXPECT_EQ(zav.run(fault + "--format json --columns alias").output,
              "{\n  \"alias\": \"Door_Open\"\n}\n");
    EXPECT_EQ(zav.run(fault + "--columns alias,nam").errors,
              "zav: --columns: \"nam\" is none of code,alias,type,bug,clear_after_cycle_nr,id,"
              "id_fault_type,id_language,name,short_description,description,comment,remedy\n"
              "zav: see zav fault --help\n");
}

TEST(FaultCommand, ShowsStoredValues)
{
    const ZavCommand zav;
    const std::string file = zav.database(ALIASES);
    runSql(file,
           "UPDATE fault_type_definition SET bug=-1, clear_after_cycle_nr=1.5 WHERE code=1;"
           "UPDATE descriptions SET remedy='\\N' WHERE id=2; UPDATE descriptions SET "
           "id_fault_type='1' WHERE id=3");
    EXPECT_EQ(zav.run("fault " + file + " 1 --stored --language 2 --format json").output, R"({
  "code": 1,
  "alias": "Door_Open",
  "type": "error",
  "bug": -1,
  "clear_after_cycle_nr": 1.5,
  "texts": [
    {
      "id": 2,
      "id_fault_type": 1,
      "id_language": 2,
      "name": "Offen",
      "short_description": "",
      "description": "",
      "comment": null,
      "remedy": "\\N"
    }
  ]
}
)");
    EXPECT_EQ(zav.run("fault " + file +
                      " 1 --stored --language 2 --format csv --columns bug,comment,remedy")
                  .output,
              "bug,comment,remedy\r\n"
              "-1,\\N,\\\\N\r\n");
    EXPECT_EQ(zav.run("fault " + file + " Door_Open --stored --language 2 --columns comment,remedy")
                  .output,
              "comment  NULL\n"
              "remedy   \\N\n");
}

}  // namespace
