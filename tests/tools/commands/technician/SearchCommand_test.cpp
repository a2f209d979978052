#include <gtest/gtest.h>

#include "support/database.h"
#include "tools/ZavCommand.h"

namespace {

const char* const ROWS =
    "INSERT INTO fault_type_definition VALUES"
    "(7,'GATE_OPEN','error',0,0),(12,'DRIVE_HOT','warning',0,0),(20,'STRASSE',NULL,0,0),"
    "(30,'NO_TEXT','info',0,0);"
    "INSERT INTO descriptions VALUES"
    "(1,7,1,'Gate','','Open the cover.','','Close the gate of the drive.'),"
    "(2,7,2,'Öffnung','','','',''),"
    "(3,12,1,'Drive too hot','Overheat','The gate is fine.',NULL,''),"
    "(4,12,2,'Antrieb','','Öl zu heiß','',''),"
    "(5,20,3,'Straße','','CAFÉ ΣΊΣΥΦΟΣ Москва',x'ff','')";

class SearchCommand : public testing::Test {
protected:
    void SetUp() override { m_zav.database(ROWS); }

    CommandResult search(const std::string& words) const
    {
        return m_zav.shell("cd " + m_zav.file("") + "; zav search faults.db " + words);
    }

    /// The codes that are found, in their order.
    std::string found(const std::string& words) const
    {
        return m_zav
            .shell("cd " + m_zav.file("") + "; zav search --format csv faults.db " + words +
                   " | sed 1d | cut -d, -f1 | paste -sd ' '")
            .output;
    }

    ZavCommand m_zav;
};

TEST_F(SearchCommand, FindsWhatHasAllWordsOfOneLanguage)
{
    struct Case {
        std::string words;
        std::string codes;
    };
    const Case cases[] = {
        {"gate", "7 12"},            // in alias and name first
        {"open", "7"},               //
        {"drive", "12 7"},           //
        {"drive gate", "12 7"},      // whichever has them in better fields
        {"gate fine", "12"},         //
        {"öffnung close", ""},       // of two languages
        {"gate_open öffnung", "7"},  // the alias is of all languages
        {"warning hot", "12"},       // the type
        {"no_text", "30"},           // without any text
        {"n/a", ""},                 // NULL is no text
        {"'too hot'", "12"},         // a piece with a blank
        {"too hot drive overheat", "12"},
    };
    for (const Case& row : cases) {
        EXPECT_EQ(found(row.words), row.codes + "\n") << row.words;
    }
}

TEST_F(SearchCommand, TakesNoNoticeOfLetterCaseAndOfHowAccentsAreWritten)
{
    for (const std::string word : {"STRASSE", "straße", "Strasse", "STRAßE", "café", "CAFE\xCC\x81",
                                   "σίσυφος", "ΣΊΣΥΦΟς", "МОСКВА", "москва"}) {
        EXPECT_EQ(found(word), "20\n") << word;
    }
    EXPECT_EQ(found("cafe"), "\n") << "accents count";
    EXPECT_EQ(found("ol"), "\n");
    EXPECT_EQ(found("\xFF"), "20\n") << "what is no UTF-8 is one character";
}

TEST_F(SearchCommand, LooksOnlyInLanguagesAndFields)
{
    struct Case {
        std::string arguments;
        std::string codes;
    };
    const Case cases[] = {
        {"gate --language 1", "7 12"},
        {"gate --language 2", "7"},
        {"gate --field description", "12"},
        {"gate --field name --field description", "7 12"},
        {"gate --field alias", "7"},
        {"gate --field remedy --language 1", "7"},
        {"drive --language 1 --language 2 --field alias", "12"},
        {"drive --language 9", "12"},
        {"antrieb --language 9", ""},
    };
    for (const Case& row : cases) {
        EXPECT_EQ(found(row.arguments), row.codes + "\n") << row.arguments;
    }
    EXPECT_EQ(search("x --field bug").errors,
              "zav: --field: \"bug\" is none of "
              "alias|type|name|short_description|description|comment|remedy\n"
              "zav: see zav search --help\n");
}

TEST_F(SearchCommand, ShowsCodeAliasLanguageNameAndThePieceOfText)
{
    const CommandResult result = search("drive");
    EXPECT_EQ(result.output,
              "12  DRIVE_HOT  [1] Drive too hot\n"
              "7  GATE_OPEN  [1] Gate\n"
              "    Close the gate of the drive.\n");
    EXPECT_EQ(result.errors, "");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(search("no_text").output, "30  NO_TEXT\n");
    EXPECT_EQ(search("drive --format csv").output,
              "code,alias,language,name,text\r\n"
              "12,DRIVE_HOT,1,Drive too hot,\r\n"
              "7,GATE_OPEN,1,Gate,Close the gate of the drive.\r\n");
    EXPECT_EQ(search("no_text --format json").output, R"([
  {
    "code": 30,
    "alias": "NO_TEXT",
    "language": null,
    "name": null,
    "text": ""
  }
]
)");
}

TEST_F(SearchCommand, CutsALongTextAroundTheWord)
{
    runSql(m_zav.file("faults.db"),
           "UPDATE descriptions SET description=replace(hex(zeroblob(50)), '00', 'word ') || "
           "'needle here' || char(10) || replace(hex(zeroblob(50)), '00', 'tail ') WHERE id=1");
    EXPECT_EQ(
        search("needle").output,
        "7  GATE_OPEN  [1] Gate\n"
        "    ... word word word word word word word needle here tail tail tail tail tail tail "
        "tail tail tail tail tail tail tail tail tail ...\n");
}

TEST_F(SearchCommand, EmphasisesTheWordsOnATerminal)
{
    if (!ZavCommand::canOpenTerminal()) {
        GTEST_SKIP() << "no pseudo-terminals here";
    }
    const CommandResult result =
        m_zav.runOnTerminal(80, "search " + m_zav.file("faults.db") + " strasse МОСКВА");
    EXPECT_EQ(result.output,
              "20  \x1b[1mSTRASSE\x1b[0m  [3] \x1b[1mStraße\x1b[0m\n"
              "    CAFÉ ΣΊΣΥΦΟΣ \x1b[1mМосква\x1b[0m\n");
}

TEST_F(SearchCommand, NamesTheNearestAliasWhenNothingIsFound)
{
    CommandResult result = search("drive_hat");
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.errors,
              "zav: faults.db: no fault type has all of: drive_hat; the nearest is DRIVE_HOT\n");
    EXPECT_EQ(result.status, 1);
    result = search("4711");
    EXPECT_EQ(result.errors,
              "zav: faults.db: no fault type has all of: 4711; zav fault looks a code up\n");
    EXPECT_EQ(result.status, 1);
    result = search("x ''");
    EXPECT_EQ(result.errors, "zav: WORD: is empty\nzav: see zav search --help\n");
    EXPECT_EQ(result.status, 2);
}

TEST_F(SearchCommand, ReportsAMissingTable)
{
    runSql(m_zav.file("faults.db"), "DROP TABLE descriptions");
    const CommandResult result = search("gate");
    EXPECT_EQ(result.errors, "zav: faults.db: cannot be read: no such table: descriptions\n");
    EXPECT_EQ(result.status, 3);
}

}  // namespace
