#include <gtest/gtest.h>

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

TEST(FaultCommand, TakesOnlyDecimalCodesOf16Bits)
{
    const ZavCommand zav;
    const std::string file = zav.database("INSERT INTO fault_type_definition(code) VALUES(8)");
    const std::string fault = "fault " + file + " ";
    for (const std::string code : {"65536", "0x8", "8.0", "+8", "' 8'", "''", "eight"}) {
        const CommandResult result = zav.run(fault + code);
        EXPECT_EQ(result.output, "") << code;
        EXPECT_EQ(result.status, 2) << code;
    }
    EXPECT_EQ(zav.run("fault " + file + " 65536").errors,
              "zav: CODE: \"65536\" is no number from 0 to 65535\n"
              "zav: see zav fault --help\n");
    EXPECT_EQ(zav.run("fault " + file + " -1").status, 2);
    EXPECT_EQ(zav.run("fault " + file + " 010").status, 1) << "decimal, not octal";
}

}  // namespace
