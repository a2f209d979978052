#include <gtest/gtest.h>

#include "support/database.h"
#include "tools/ZavCommand.h"

namespace {

const char* const ROWS =
    "INSERT INTO fault_type_definition VALUES"
    "(101,'HOT','error',0,3),(102,'COLD','info',NULL,0),(103,'OLD','info',0,0);"
    "INSERT INTO descriptions VALUES"
    "(1,101,1,'Drive too hot','','The drive is hot.','',NULL),"
    "(2,101,2,'Antrieb zu heiß','','','',''),(3,103,1,'Old','','','','')";

const char* const CHANGES =
    "UPDATE descriptions SET name='Drive far too hot', remedy='Wait.' || char(10) || '<a|b>' WHERE "
    "id=1;"
    "UPDATE fault_type_definition SET bug=7 WHERE code=102;"
    "DELETE FROM fault_type_definition WHERE code=103; DELETE FROM descriptions WHERE id=3;"
    "INSERT INTO fault_type_definition VALUES(9,'NEW',NULL,1,2);"
    "INSERT INTO descriptions VALUES(7,101,3,'x','\\N',NULL,'','');";

/// old.db, and new.db with changes.
class Diff : public testing::Test {
protected:
    void SetUp() override
    {
        makeDatabase(m_zav.file("old.db"), ROWS);
        makeDatabase(m_zav.file("new.db"), ROWS);
        runSql(m_zav.file("new.db"), CHANGES);
    }

    CommandResult diff(const std::string& options = "") const
    {
        return m_zav.shell("cd " + m_zav.file("") + "; zav diff old.db new.db " + options);
    }

    ZavCommand m_zav;
};

TEST_F(Diff, ShowsWhatIsAddedRemovedAndChanged)
{
    const CommandResult result = diff();
    EXPECT_EQ(result.output, R"(added 9 NEW
  alias
    + NEW
  type
    + NULL
  bug
    + 1
  clear_after_cycle_nr
    + 2

changed 101 HOT, language 1
  name
    - Drive too hot
    + Drive far too hot
  remedy
    - NULL
    + Wait.
    + <a|b>

added 101 HOT, language 3
  name
    + x
  short_description
    + \N
  description
    + NULL
  comment
    +
  remedy
    +

changed 102 COLD
  bug
    - NULL
    + 7

removed 103 OLD
  alias
    - OLD
  type
    - info
  bug
    - 0
  clear_after_cycle_nr
    - 0

removed 103 OLD, language 1
  name
    - Old
  short_description
    -
  description
    -
  comment
    -
  remedy
    -
)");
    EXPECT_EQ(result.errors, "");
    EXPECT_EQ(result.status, 1);
}

TEST_F(Diff, WritesALinePerFieldAsCsv)
{
    EXPECT_EQ(diff("--format csv").output,
              "change,code,language,field,old,new\r\n"
              "added,9,,alias,,NEW\r\n"
              "added,9,,type,,\\N\r\n"
              "added,9,,bug,,1\r\n"
              "added,9,,clear_after_cycle_nr,,2\r\n"
              "changed,101,1,name,Drive too hot,Drive far too hot\r\n"
              "changed,101,1,remedy,\\N,\"Wait.\n<a|b>\"\r\n"
              "added,101,3,name,,x\r\n"
              "added,101,3,short_description,,\\\\N\r\n"
              "added,101,3,description,,\\N\r\n"
              "added,101,3,comment,,\r\n"
              "added,101,3,remedy,,\r\n"
              "changed,102,,bug,\\N,7\r\n"
              "removed,103,,alias,OLD,\r\n"
              "removed,103,,type,info,\r\n"
              "removed,103,,bug,0,\r\n"
              "removed,103,,clear_after_cycle_nr,0,\r\n"
              "removed,103,1,name,Old,\r\n"
              "removed,103,1,short_description,,\r\n"
              "removed,103,1,description,,\r\n"
              "removed,103,1,comment,,\r\n"
              "removed,103,1,remedy,,\r\n");
}

TEST_F(Diff, WritesTypedValuesAsJson)
{
    EXPECT_EQ(diff("--format json --code 102 --code 101 --language 1 --language 7").output, R"([
  {
    "change": "changed",
    "code": 101,
    "language": 1,
    "fields": [
      {
        "field": "name",
        "old": "Drive too hot",
        "new": "Drive far too hot"
      },
      {
        "field": "remedy",
        "old": null,
        "new": "Wait.\n<a|b>"
      }
    ]
  }
]
)");
    EXPECT_EQ(diff("--format json --code 102").output, R"([
  {
    "change": "changed",
    "code": 102,
    "language": null,
    "fields": [
      {
        "field": "bug",
        "old": null,
        "new": 7
      }
    ]
  }
]
)");
    const CommandResult same = diff("--format json --code 5");
    EXPECT_EQ(same.output, "[]\n");
    EXPECT_EQ(same.status, 0);
}

TEST_F(Diff, WritesMarkdownForReleaseNotes)
{
    EXPECT_EQ(diff("--format markdown").output, R"(## Added

| fault | language | field | new |
| --- | ---: | --- | --- |
| 9 NEW |  | alias | NEW |
| 9 NEW |  | type | *NULL* |
| 9 NEW |  | bug | 1 |
| 9 NEW |  | clear\_after\_cycle\_nr | 2 |
| 101 HOT | 3 | name | x |
| 101 HOT | 3 | short\_description | \\N |
| 101 HOT | 3 | description | *NULL* |
| 101 HOT | 3 | comment |  |
| 101 HOT | 3 | remedy |  |

## Changed

| fault | language | field | old | new |
| --- | ---: | --- | --- | --- |
| 101 HOT | 1 | name | Drive too hot | Drive far too hot |
| 101 HOT | 1 | remedy | *NULL* | Wait.<br>\<a\|b\> |
| 102 COLD |  | bug | *NULL* | 7 |

## Removed

| fault | language | field | old |
| --- | ---: | --- | --- |
| 103 OLD |  | alias | OLD |
| 103 OLD |  | type | info |
| 103 OLD |  | bug | 0 |
| 103 OLD |  | clear\_after\_cycle\_nr | 0 |
| 103 OLD | 1 | name | Old |
| 103 OLD | 1 | short\_description |  |
| 103 OLD | 1 | description |  |
| 103 OLD | 1 | comment |  |
| 103 OLD | 1 | remedy |  |
)");
}

TEST_F(Diff, EmphasisesTheChangedWordsOnATerminal)
{
    if (!ZavCommand::canOpenTerminal()) {
        GTEST_SKIP() << "no pseudo-terminals here";
    }
    const CommandResult result =
        m_zav.runOnTerminal(80, "diff " + m_zav.file("old.db") + " " + m_zav.file("new.db") +
                                    " --code 101 --language 1");
    EXPECT_EQ(result.output,
              "\x1b[1mchanged 101 HOT, language 1\x1b[0m\n"
              "  name\n"
              "    - Drive too hot\n"
              "    + Drive \x1b[1m"
              "far \x1b[0mtoo hot\n"
              "  remedy\n"
              "    - \x1b[2mNULL\x1b[0m\n"
              "    + Wait.\n"
              "    + <a|b>\n");
}

TEST_F(Diff, TakesNoNoticeOfRowIdsAndOrder)
{
    const std::string same = m_zav.file("new.db");
    setContents(same, "");
    runSql(same, schemaSql() + ROWS +
                     ";UPDATE descriptions SET id=id+100; CREATE TABLE copy AS SELECT * FROM "
                     "descriptions ORDER BY id DESC; DELETE FROM descriptions; INSERT INTO "
                     "descriptions SELECT * FROM copy; DROP TABLE copy; PRAGMA user_version=9");
    const CommandResult result = diff();
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.status, 0);
}

TEST_F(Diff, ComparesSeveralTextsOfOneFaultInTurn)
{
    const std::string twice =
        "INSERT INTO descriptions VALUES(50,101,1,'a','','','',''),(51,101,1,'b','','','','')";
    runSql(m_zav.file("old.db"), twice);
    setContents(m_zav.file("new.db"), contents(m_zav.file("old.db")));
    EXPECT_EQ(diff().output, "");
    runSql(m_zav.file("new.db"), "UPDATE descriptions SET name='c' WHERE id=51");
    EXPECT_EQ(diff("--format csv").output,
              "change,code,language,field,old,new\r\n"
              "changed,101,1,name,b,c\r\n");
}

TEST_F(Diff, TellsStoredTypesApart)
{
    setContents(m_zav.file("new.db"), contents(m_zav.file("old.db")));
    runSql(m_zav.file("new.db"),
           "UPDATE fault_type_definition SET bug='x' WHERE code=102; UPDATE descriptions SET "
           "remedy='n/a' WHERE id=1");
    EXPECT_EQ(diff("--format csv").output,
              "change,code,language,field,old,new\r\n"
              "changed,101,1,remedy,\\N,n/a\r\n"
              "changed,102,,bug,\\N,x\r\n");
}

TEST_F(Diff, SaysWhichFileCannotBeRead)
{
    setContents(m_zav.file("new.db"), "no database, but long enough for one");
    const CommandResult result = diff();
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.errors, "zav: new.db: cannot be read: file is not a database\n");
    EXPECT_EQ(result.status, 3);
}

}  // namespace
