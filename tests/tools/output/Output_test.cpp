#include <gtest/gtest.h>

#include "support/database.h"
#include "tools/ZavCommand.h"

namespace {

std::string faultTypes(const std::string& values)
{
    return "INSERT INTO fault_type_definition VALUES" + values;
}

TEST(Output, WrapsTextsToTheWidth)
{
    const ZavCommand zav;
    const std::string file = zav.database(
        faultTypes("(1,'the oven door is open','a_word_wider_than_any_line_of_a_block_is',2,3)"));
    EXPECT_EQ(zav.run("faults " + file, "COLUMNS=50").output,
              "code  alias            type             bug  clear\n"
              "                                             after\n"
              "                                             cycle\n"
              "                                                nr\n"
              "----  ---------------  ---------------  ---  -----\n"
              "   1  the oven door    a_word_wider_th    2      3\n"
              "      is open          an_any_line_of_\n"
              "                       a_block_is\n");
}

TEST(Output, ShowsRecordsWhereColumnsWouldBeTooNarrow)
{
    const ZavCommand zav;
    const std::string file = zav.database(faultTypes("(1,'the oven door is open','b',2,3)"));
    EXPECT_EQ(zav.run("faults " + file, "COLUMNS=35").output,
              "code                  1\n"
              "alias                 the oven door\n"
              "                      is open\n"
              "type                  b\n"
              "bug                   2\n"
              "clear after cycle nr  3\n");
}

/// The lines of a command's output that are wider than it was told.
std::string tooWideLines(const ZavCommand& zav, const std::string& command, int columns)
{
    return zav
        .shell("COLUMNS=" + std::to_string(columns) + "; export COLUMNS; zav " + command +
               " | LC_ALL=C.UTF-8 grep -E '^.{" + std::to_string(columns + 1) + "}'")
        .output;
}

TEST(Output, NoLineIsWiderThanTheTerminal)
{
    const ZavCommand zav;
    const std::string file = zav.database();
    zav.shell("sqlite3 -bail " + file + " <'" ZAV_SOURCE_DIR "/db/sample.sql'");
    for (const int columns : {40, 80, 120, 200}) {
        EXPECT_EQ(tooWideLines(zav, "faults " + file, columns), "") << columns;
        EXPECT_EQ(tooWideLines(zav, "texts " + file, columns), "") << columns;
    }
    EXPECT_NE(tooWideLines(zav, "texts --format csv " + file, 80), "") << "CSV is not wrapped";
}

TEST(Output, CountsColumnsAndNotBytes)
{
    const ZavCommand zav;
    const std::string file =
        zav.database(faultTypes("(1,'é','x',0,0),"
                                "(2,'e' || char(769),'x',0,0),"
                                "(3,'漢字','x',0,0),"
                                "(4,'abcdef','x',0,0)"));
    EXPECT_EQ(zav.run("faults " + file).output,
              "code  alias   type  bug  clear after cycle nr\n"
              "----  ------  ----  ---  --------------------\n"
              "   1  é       x       0                     0\n"
              "   2  e\u0301       x       0                     0\n"
              "   3  漢字    x       0                     0\n"
              "   4  abcdef  x       0                     0\n");
}

TEST(Output, NeverSendsControlCharactersOrBrokenUtf8)
{
    const ZavCommand zav;
    const std::string file = zav.database(
        faultTypes("(1,char(27) || '[31m' || char(155) || char(8238),CAST(x'41ff' AS TEXT),0,0)"));
    EXPECT_EQ(zav.run("faults " + file).output,
              "code  alias                 type  bug  clear after cycle nr\n"
              "----  --------------------  ----  ---  --------------------\n"
              "   1  \\x1b[31m\\u009b\\u202e  A\uFFFD      0                     0\n");
    EXPECT_EQ(zav.run("faults --format json " + file).output, R"([
  {
    "code": 1,
    "alias": "\u001b[31m\u009b\u202e",
    "type": "A)"
                                                              "\uFFFD"
                                                              R"(",
    "bug": 0,
    "clear_after_cycle_nr": 0
  }
]
)");
    EXPECT_EQ(zav.run("faults --format csv " + file).output,
              "code,alias,type,bug,clear_after_cycle_nr\r\n"
              "1,\x1b[31m\u009b\u202e,A\xff,0,0\r\n")
        << "bytes stay as they are for another program";
    if (!ZavCommand::canOpenTerminal()) {
        GTEST_SKIP() << "no pseudo-terminal can be opened here";
    }
    EXPECT_EQ(zav.runOnTerminal(80, "faults --format csv " + file).output,
              "code,alias,type,bug,clear_after_cycle_nr\n"
              "1,\\x1b[31m\\u009b\\u202e,A\uFFFD,0,0\n");
}

TEST(Output, EscapesACharacterWhereverItStands)
{
    struct Case {
        std::string character;  ///< as an expression of SQL
        std::string shown;
    };
    const Case cases[] = {
        {"char(31)", R"(\x1f)"},
        {"char(127)", R"(\x7f)"},
        {"char(173)", R"(\u00ad)"},
        {"' '", " "},
        {"'~'", "~"},
    };
    for (const Case& row : cases) {
        const ZavCommand zav;
        const std::string file = zav.database(
            "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM n WHERE i<20)"
            "INSERT INTO fault_type_definition SELECT i,"
            "substr('abcdefghijklmnopqrst',1,i) || " +
            row.character + " || substr('abcdefghijklmnopqrst',i+1) || '.','',0,0 FROM n");
        std::string expected;
        for (std::size_t i = 1; i <= 20; ++i) {
            std::string text = "abcdefghijklmnopqrst.";
            expected += text.insert(i, row.shown) + "\n";
        }
        EXPECT_EQ(zav.shell("zav faults --columns alias " + file + " | sed 1,2d").output, expected);
    }
}

TEST(Output, QuotesCsvFieldsOnlyWhereNeeded)
{
    const ZavCommand zav;
    const std::string file =
        zav.database(faultTypes("(1,'a,b','say \"x\"',0,0),(2,'two' || char(10) || 'lines',"
                                "'cr' || char(13),0,0),(3,' blank ','it''s',0,0)"));
    EXPECT_EQ(zav.run("faults --format csv " + file).output,
              "code,alias,type,bug,clear_after_cycle_nr\r\n"
              "1,\"a,b\",\"say \"\"x\"\"\",0,0\r\n"
              "2,\"two\nlines\",\"cr\r\",0,0\r\n"
              "3, blank ,it's,0,0\r\n");
}

TEST(Output, TakesWidthAndColourFromTheTerminal)
{
    if (!ZavCommand::canOpenTerminal()) {
        GTEST_SKIP() << "no pseudo-terminal can be opened here";
    }
    const ZavCommand zav;
    const std::string file = zav.database(faultTypes("(1,'the oven door is open','b',2,3)"));
    EXPECT_EQ(zav.runOnTerminal(39, "faults " + file).output,
              "\x1b[1mcode\x1b[0m  \x1b[1malias\x1b[0m            \x1b[1mtype\x1b[0m  "
              "\x1b[1mbug\x1b[0m  \x1b[1mclear\x1b[0m\n"
              "                                  \x1b[1mafter\x1b[0m\n"
              "                                  \x1b[1mcycle\x1b[0m\n"
              "                                     \x1b[1mnr\x1b[0m\n"
              "----  ---------------  ----  ---  -----\n"
              "   1  the oven door    b       2      3\n"
              "      is open\n");
}

TEST(Output, HasNoColourWhereNoneIsWanted)
{
    if (!ZavCommand::canOpenTerminal()) {
        GTEST_SKIP() << "no pseudo-terminal can be opened here";
    }
    const ZavCommand zav;
    const std::string file = zav.database(faultTypes("(1,'a','b',2,3)"));
    const std::string plain =
        "code  alias  type  bug  clear after cycle nr\n"
        "----  -----  ----  ---  --------------------\n"
        "   1  a      b       2                     3\n";
    EXPECT_EQ(zav.runOnTerminal(80, "faults " + file, "NO_COLOR=1").output, plain);
    EXPECT_EQ(zav.runOnTerminal(80, "faults " + file, "TERM=dumb").output, plain);
    EXPECT_EQ(zav.run("faults " + file).output, plain);
    EXPECT_NE(zav.runOnTerminal(80, "faults " + file, "NO_COLOR=").output, plain);
}

TEST(Output, PadsNoCellBeyond40ColumnsInAPipe)
{
    const ZavCommand zav;
    const std::string wide(60, 'w');
    const std::string file =
        zav.database("INSERT INTO descriptions VALUES(1,1,1,'" + wide + "','a','b','c','" + wide +
                     "'),(2,2,2,'n','a','b','c','r')");
    const std::string rule(40, '-');
    EXPECT_EQ(zav.run("texts --columns id,id_fault_type,id_language,name,short_description,"
                      "description,comment,remedy " +
                      file)
                  .output,
              "id  id fault type  id language  name" + std::string(38, ' ') +
                  "short description  description  comment  remedy\n"
                  "--  -------------  -----------  " +
                  rule + "  -----------------  -----------  -------  " + rule +
                  "\n"
                  " 1              1            1  " +
                  wide + "  a                  b            c        " + wide +
                  "\n"
                  " 2              2            2  n" +
                  std::string(41, ' ') + "a                  b            c        r\n");
}

TEST(Output, ATableInAPipeTakesAtMostTwiceItsTexts)
{
    const ZavCommand zav;
    const std::string file = zav.database();
    zav.shell("sqlite3 -bail " + file + " <'" ZAV_SOURCE_DIR "/db/sample.sql'");
    runSql(file, "UPDATE descriptions SET remedy=hex(zeroblob(50000)) WHERE id=1");
    const std::string columns = zav.run("texts --columns id,name,remedy " + file).output;
    const std::string texts = zav.run("texts --format csv --columns id,name,remedy " + file).output;
    EXPECT_LE(columns.size(), 2 * texts.size());
}

TEST(Output, BreaksNoWordOfTheSampleAt120Columns)
{
    const ZavCommand zav;
    const std::string file = zav.database();
    zav.shell("sqlite3 -bail " + file + " <'" ZAV_SOURCE_DIR "/db/sample.sql'");
    const std::string words = " | tr -s ' \n' '\n\n' | LC_ALL=C sort -u";
    EXPECT_EQ(zav.shell("{ sqlite3 -csv " + file +
                        " 'SELECT name, short_description, description, comment, remedy FROM "
                        "descriptions' | tr '\",' '\n '" +
                        words + " >all; COLUMNS=120; export COLUMNS; zav texts " + file +
                        " | tr ',' ' '" + words +
                        " | grep -E '^[A-Za-z]{8,}' | grep -vxFf all | grep -vE "
                        "'^(language|description)'; rm all; }")
                  .output,
              "");
}

TEST(Output, StaysWithinANarrowTerminal)
{
    const ZavCommand zav;
    const std::string file = zav.database(
        "INSERT INTO fault_type_definition VALUES(1,'the oven door is open','b',2,3);"
        "INSERT INTO descriptions VALUES(1,1,1,'a_word_wider_than_the_line','','','','')");
    EXPECT_EQ(tooWideLines(zav, "fault " + file + " 1", 20), "");
    EXPECT_EQ(zav.run("faults " + file, "COLUMNS=20").output,
              "code\n"
              "  1\n"
              "alias\n"
              "  the oven door is\n"
              "  open\n"
              "type\n"
              "  b\n"
              "bug\n"
              "  2\n"
              "clear after cycle nr\n"
              "  3\n");
}

TEST(Output, EscapesInvisibleCharacters)
{
    const ZavCommand zav;
    const std::string file =
        zav.database(faultTypes("(1,'a' || char(173) || 'b' || char(8203) || char(65279),"
                                "'t' || char(917569),0,0)"));
    EXPECT_EQ(zav.run("faults " + file).output,
              "code  alias                 type         bug  clear after cycle nr\n"
              "----  --------------------  -----------  ---  --------------------\n"
              "   1  a\\u00adb\\u200b\\ufeff  t\\U000e0041    0                     0\n");
    EXPECT_EQ(zav.shell("zav faults --format json " + file + " | grep -E 'alias|type'").output,
              "    \"alias\": \"a\\u00adb\\u200b\\ufeff\",\n"
              "    \"type\": \"t\\udb40\\udc41\",\n");
}

TEST(Output, JsonIsReadBackAsItWasStored)
{
    const ZavCommand zav;
    const std::string file = zav.database(
        faultTypes("(1,'quote \" back \\ slash / tab ' || char(9) || char(10) || char(1),"
                   "'\u00fc\U0001F600',0,0),(2,'','plain',0,0)"));
    EXPECT_EQ(zav.shell("zav faults --format json " + file +
                        " | python3 -c 'import json, sys; [print(repr(row[\"alias\"]), "
                        "ascii(row[\"type\"])) for row in json.load(sys.stdin)]'")
                  .output,
              "'quote \" back \\\\ slash / tab \\t\\n\\x01' '\\xfc\\U0001f600'\n"
              "'' 'plain'\n");
}

TEST(Output, ReportsWhatCannotBeWritten)
{
    const ZavCommand zav;
    const CommandResult result = zav.shell("zav faults " + zav.database() + " >/dev/full");
    EXPECT_EQ(result.errors, "zav: standard output cannot be written\n");
    EXPECT_EQ(result.status, 3);
}

}  // namespace
