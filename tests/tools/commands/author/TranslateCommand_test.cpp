#include <gtest/gtest.h>

#include "support/database.h"
#include "tools/ZavCommand.h"

namespace {

const char* const ROWS =
    "INSERT INTO fault_type_definition VALUES(12,'E<12>','error',0,3),(7,NULL,'info',0,0);"
    "INSERT INTO descriptions VALUES"
    "(1,12,1,'a & b',' two' || char(13,10) || 'lines' || char(9),'',NULL,'%d < 3'),"
    "(2,12,3,NULL,'deux','','','%d'),"
    "(3,7,1,'n','s','d','say \"why\"',NULL),(4,7,30,'x','y','z','c','r')";

const char* const HEAD =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
    "<xliff version=\"1.2\" xmlns=\"urn:oasis:names:tc:xliff:document:1.2\">\n";

/// The one unit that is translated only in part.
const char* const NAME =
    "      <trans-unit id=\"12/name\" xml:space=\"preserve\">\n"
    "        <source>a &amp; b</source>\n"
    "        <target state=\"needs-translation\" />\n"
    "        <note from=\"alias\">E&lt;12&gt;</note>\n"
    "      </trans-unit>\n";

std::string unitOf7(const std::string& field, const std::string& text)
{
    return "      <trans-unit id=\"7/" + field +
           "\" xml:space=\"preserve\">\n"
           "        <source>" +
           text +
           "</source>\n"
           "        <target state=\"needs-translation\" />\n"
           "        <note from=\"comment\">say \"why\"</note>\n"
           "      </trans-unit>\n";
}

std::string allOf7()
{
    return unitOf7("name", "n") + unitOf7("short_description", "s") + unitOf7("description", "d");
}

class Translate : public testing::Test {
protected:
    CommandResult translate(const std::string& options = "--from 1 --to 3") const
    {
        return m_zav.shell("cd " + m_zav.file("") + "; zav translate faults.db " + options);
    }

    static void expectXliff(const CommandResult& result, const std::string& languages,
                            const std::string& units)
    {
        EXPECT_EQ(result.output, HEAD +
                                     ("  <file original=\"faults.db;from=1;to=3\" " + languages) +
                                     " datatype=\"plaintext\">\n"
                                     "    <body>\n" +
                                     units +
                                     "    </body>\n"
                                     "  </file>\n"
                                     "</xliff>\n");
        EXPECT_EQ(result.errors, "");
        EXPECT_EQ(result.status, 0);
    }

    ZavCommand m_zav;
};

TEST_F(Translate, WritesAUnitForEachText)
{
    m_zav.database(ROWS);
    expectXliff(translate(), R"(source-language="x-1" target-language="x-3")",
                allOf7() + NAME +
                    "      <trans-unit id=\"12/short_description\" xml:space=\"preserve\" "
                    "approved=\"yes\">\n"
                    "        <source> two&#13;\nlines\t</source>\n"
                    "        <target state=\"translated\">deux</target>\n"
                    "        <note from=\"alias\">E&lt;12&gt;</note>\n"
                    "      </trans-unit>\n"
                    "      <trans-unit id=\"12/remedy\" xml:space=\"preserve\" approved=\"yes\">\n"
                    "        <source>%d &lt; 3</source>\n"
                    "        <target state=\"translated\">%d</target>\n"
                    "        <note from=\"alias\">E&lt;12&gt;</note>\n"
                    "      </trans-unit>\n");
}

TEST_F(Translate, LeavesOutWhatIsTranslatedIfAsked)
{
    m_zav.database(ROWS);
    expectXliff(translate("--missing --from 1 --to 3 --names 1=en,3=fr-CA"),
                R"(source-language="en" target-language="fr-CA")", allOf7() + NAME);
}

TEST_F(Translate, RefusesWhatXmlCannotHold)
{
    const std::string file = m_zav.database(ROWS);
    runSql(file,
           "UPDATE descriptions SET name='a' || char(1), comment=char(65534) WHERE id=1;"
           "UPDATE descriptions SET name=char(27) || 'b' WHERE id=2;"
           "UPDATE fault_type_definition SET alias=char(8) WHERE code=7");
    runSql(file,
           "UPDATE descriptions SET short_description='', remedy='' WHERE id=1;"
           "UPDATE descriptions SET short_description='', description='' WHERE id=3");
    const CommandResult result = translate();
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.errors,
              "faults.db: 7/name: the alias holds a character that XML cannot hold\n"
              "faults.db: 12/name: the text holds a character that XML cannot hold\n"
              "faults.db: 12/name: the translation holds a character that XML cannot hold\n"
              "faults.db: 12/name: the comment holds a character that XML cannot hold\n"
              "zav: not translated: faults.db: 4 things cannot travel\n");
    EXPECT_EQ(result.status, 1);
    // What is not written does not matter.
    runSql(file,
           "UPDATE fault_type_definition SET alias='' WHERE code=7; UPDATE descriptions SET "
           "name='a', comment='' WHERE id=1; UPDATE descriptions SET name=char(2) WHERE id=4");
    EXPECT_EQ(translate("--from 1 --to 3 --missing").status, 0);
}

TEST_F(Translate, SaysWhichRowsCannotTravel)
{
    m_zav.database(ROWS);
    runSql(m_zav.file("faults.db"),
           "UPDATE descriptions SET remedy=x'00' WHERE id=4;"
           "INSERT INTO descriptions VALUES(20,7,1,'','','','',''),"
           "(21,7,5,CAST(x'ff' AS TEXT),'','','','')");
    const CommandResult result = translate();
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.errors,
              "faults.db: text of fault type 7, language 1: the fault type 7 has a text already\n"
              "faults.db: text of fault type 7, language 5, name: the text holds bytes that are no "
              "UTF-8\n"
              "faults.db: text of fault type 7, language 30, remedy: is no text\n"
              "zav: not translated: faults.db: 3 things cannot travel\n");
    EXPECT_EQ(result.status, 1);
}

TEST_F(Translate, RefusesALanguageWithoutTexts)
{
    m_zav.database(ROWS);
    const CommandResult result = translate("--from 9 --to 3");
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.errors, "zav: not translated: faults.db: no text has the language 9\n");
    EXPECT_EQ(result.status, 1);
}

TEST_F(Translate, RefusesArgumentsThatMakeNoSense)
{
    const std::pair<const char*, const char*> cases[] = {
        {"--from 1 --to 1", "--to: is the language of --from"},
        {"--from 1 --to 65536", "--to: \"65536\" is no number from 0 to 65535"},
        {"--from 1", "--to is required"},
        {"--from 1 --to 3 --names 1", "--names: \"1\" is no name of a language, such as 1=en"},
        {"--from 1 --to 3 --names '1=e n'",
         "--names: \"1=e n\" is no name of a language, such as 1=en"},
        {"--from 1 --to 3 --names en=1", "--names: \"en\" is no number from 0 to 65535"},
        {"--from 1 --to 3 --names 1=en,1=de", "--names: language 1 has a name already"},
        {"--from 1 --to 3 --format json", "--format: zav translate writes nothing but XLIFF"},
    };
    for (const auto& [options, message] : cases) {
        const CommandResult result = translate(options);
        EXPECT_EQ(result.errors,
                  std::string("zav: ") + message + "\nzav: see zav translate --help\n");
        EXPECT_EQ(result.output, "");
        EXPECT_EQ(result.status, 2);
    }
}

}  // namespace
