#include <gtest/gtest.h>

#include <filesystem>

#include "support/database.h"
#include "tools/ZavCommand.h"

namespace {

const char* const ROWS =
    "INSERT INTO fault_type_definition VALUES(12,'E12','error',0,3),(7,'E7','info',0,0);"
    "INSERT INTO descriptions VALUES"
    "(1,12,1,'door','the door','the door %d','c','close'),(2,12,3,'porte','p','la porte "
    "%d','c',''),"
    "(3,7,1,'motor','the motor','','c','wait'); PRAGMA user_version=4";

std::string unit(const std::string& id, const std::string& source, const std::string& target)
{
    return "<trans-unit id=\"" + id + "\"><source>" + source + "</source>" + target +
           "</trans-unit>\n";
}

std::string target(const std::string& text, const std::string& state = "translated")
{
    return "<target state=\"" + state + "\">" + text + "</target>";
}

/// The first of the units stands in the third line.
std::string xliff(const std::string& units, const std::string& original = "faults.db;from=1;to=3")
{
    return "<xliff version=\"1.2\" xmlns=\"urn:oasis:names:tc:xliff:document:1.2\">\n<file "
           "original=\"" +
           original + "\"><body>\n" + units + "</body></file></xliff>\n";
}

class Merge : public testing::Test {
protected:
    void SetUp() override { m_zav.database(ROWS); }

    CommandResult mergeFile(const std::string& options = "") const
    {
        return m_zav.shell("cd " + m_zav.file("") + "; zav merge faults.db t.xlf new.db " +
                           options);
    }

    CommandResult merge(const std::string& content, const std::string& options = "") const
    {
        setContents(m_zav.file("t.xlf"), content);
        return mergeFile(options);
    }

    std::string texts() const
    {
        return m_zav
            .shell("sqlite3 -readonly -nullvalue NULL " + m_zav.file("new.db") +
                   " 'SELECT * FROM descriptions'")
            .output;
    }

    void expectRefusal(const CommandResult& result, const std::vector<std::string>& mistakes) const
    {
        std::string errors;
        for (const std::string& mistake : mistakes) {
            errors += "t.xlf:" + mistake + "\n";
        }
        EXPECT_EQ(result.errors, errors +
                                     "zav: not merged: t.xlf: " + std::to_string(mistakes.size()) +
                                     (mistakes.size() == 1 ? " mistake\n" : " mistakes\n"));
        EXPECT_EQ(result.output, "");
        EXPECT_EQ(result.status, 1);
        EXPECT_FALSE(std::filesystem::exists(m_zav.file("new.db")));
    }

    ZavCommand m_zav;
};

TEST_F(Merge, TakesWhatIsTranslatedIntoACopy)
{
    const std::string before = contentOf(m_zav.file("faults.db"));
    const CommandResult result = merge(
        xliff(unit("12/name", "door", target("la\n porte &lt;&#233;&gt;\t", "final")) +
              unit("12/short_description", "the door", target("p")) +
              unit("12/remedy", "close", "<target>fermer</target>") +
              unit("7/name", "motor", target("moteur", "signed-off")) +
              unit("7/short_description", "the motor", target("le<!-- --> <![CDATA[<moteur>]]>")) +
              unit("7/remedy", "wait", target("attendre", "needs-translation"))),
        "--format json");
    EXPECT_EQ(result.errors, "");
    EXPECT_EQ(result.output.substr(0, result.output.find("\"content\"")),
              "{\n  \"file\": \"new.db\",\n  \"changed\": 1,\n  \"added\": 3,\n  \"old\": null,\n"
              "  \"new\": {\n    \"release\": 4,\n    ");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(texts(),
              "1|7|1|motor|the motor||c|wait\n"
              "2|7|3|moteur|le <moteur>|||NULL\n"
              "3|12|1|door|the door|the door %d|c|close\n"
              "4|12|3|la\n porte <é>\t|p|la porte %d|c|fermer\n");
    EXPECT_EQ(contentOf(m_zav.file("faults.db")), before);
}

TEST_F(Merge, TakesNothingThatIsNotDone)
{
    std::string units = unit("12/name", "door", target("", "final")) +
                        unit("12/short_description", "the door", "") +
                        unit("12/description", "another source", "<target/>");
    const char* const states[] = {"new", "needs-translation", "needs-review-translation", "x-own"};
    const char* const fields[] = {"7/name", "7/short_description", "7/remedy", "12/remedy"};
    for (int i = 0; i < 4; ++i) {
        units += unit(fields[i], "another source", target("text", states[i]));
    }
    const CommandResult result = merge(xliff(units));
    EXPECT_NE(result.output.find("changed       0\nadded         0\n"), std::string::npos)
        << result.output;
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(texts(),
              "1|7|1|motor|the motor||c|wait\n"
              "2|12|1|door|the door|the door %d|c|close\n"
              "3|12|3|porte|p|la porte %d|c|\n");
}

TEST_F(Merge, IsTheOtherWayOfTranslate)
{
    runSql(m_zav.file("faults.db"), "UPDATE descriptions SET name=' a' || char(13,10) || 'b '");
    const CommandResult result = m_zav.shell(
        "cd " + m_zav.file("") +
        "; zav translate faults.db --from 1 --to 3 | sed 's|<target state=\"needs-translation\" />|"
        "<target>new</target>|' >t.xlf; zav merge faults.db t.xlf new.db >&2; "
        "zav diff faults.db new.db --format csv");
    EXPECT_EQ(result.output,
              "change,code,language,field,old,new\r\n"
              "added,7,3,name,,new\r\n"
              "added,7,3,short_description,,new\r\n"
              "added,7,3,description,,\r\n"
              "added,7,3,comment,,\r\n"
              "added,7,3,remedy,,new\r\n"
              "changed,12,3,remedy,,new\r\n");
}

TEST_F(Merge, FindsAllMistakesAtOnce)
{
    const std::string source(50, 'x');
    runSql(m_zav.file("faults.db"),
           "UPDATE descriptions SET short_description='" + source + "y' WHERE id=3");
    expectRefusal(
        merge(xliff(unit("99/name", "a", "") + unit("name", "a", "") + unit("12", "a", "") +
                    unit("12/comment", "a", target("b")) + unit("70000/name", "a", target("b")) +
                    unit("12/name", "gate", target("porte")) +
                    unit("7/description", "gone", target("disparu")) +
                    unit("12/description", "the door %d", target("la porte")) +
                    unit("7/remedy", "wait", target("attendre %s")) +
                    unit("7/remedy", "wait", target("attendre")) +
                    unit("7/short_description", source + "z", target("b")) +
                    unit("7/name", "<g id=\"1\">motor</g>", target("mo<x/>teur")))),
        {
            "14: 7/name: the source holds an element, g; only text is taken",
            "14: 7/name: the target holds an element, x; only text is taken",
            "3: 99/name: there is no fault type \"99\"",
            "4: name: there is no fault type \"name\"",
            std::string("5: 12: there is no field \"\"; translated are ") +
                "name, short_description, description, remedy",
            std::string("6: 12/comment: there is no field \"comment\"; translated are ") +
                "name, short_description, description, remedy",
            "7: 70000/name: there is no fault type \"70000\"",
            R"(8: 12/name: the source is "gate", but the file has "door"; translate that)",
            R"(9: 7/description: the source is "gone", but the file has none; translate that)",
            std::string("10: 12/description: the target has no placeholder, but the source ") +
                "has %d; use the same",
            "11: 7/remedy: the target has %s, but the source has no placeholder; use the same",
            "12: 7/remedy: stands in line 11 already",
            "13: 7/short_description: the source is \"..." + source.substr(0, 20) +
                "z\", but the file has \"..." + source.substr(0, 20) + "y\"; translate that",
            R"(14: 7/name: the source is "", but the file has "motor"; translate that)",
        });
}

TEST_F(Merge, RefusesWhatIsNoXliff)
{
    const std::string good = xliff("");
    struct Case {
        std::string content;
        std::string mistake;
    };
    const std::string languages =
        "2: original: names no languages; it must end like \";from=1;to=3\", as zav translate has "
        "written it";
    std::string deep;
    for (int i = 0; i < 100; ++i) {
        deep += "<g>";
    }
    const Case cases[] = {
        {"", "1: there is no element"},
        {"a", "1: text stands outside of all elements"},
        {"<a/>", "1: is no XLIFF 1.2"},
        {"<xliff version=\"2.0\"/>", "1: is no XLIFF 1.2"},
        {xliff("", "faults.db"), languages},
        {xliff("", ";from=1;to=65536"), languages},
        {xliff("", ";from=;to=3"), languages},
        {"<!DOCTYPE xliff>\n" + good, "1: a document type or the like stands here; remove it"},
        {"\n<!doctype a [<!ENTITY b \"c\">]>" + good,
         "2: a document type or the like stands here; remove it"},
        {"<a>\n<!ELEMENT b ANY></a>", "2: a document type or the like stands here; remove it"},
        {deep + "\n<g>", "2: more than 100 elements stand in one another"},
        {"<a>\n<b>", "2: the element b is not closed"},
        {"<a></b>", "1: </b> closes no element"},
        {"<a/>\n<b/>", "2: a second element stands beside the outermost one"},
        {"<a>\n\n&nbsp;</a>", "3: &nbsp; begins no reference that XML knows"},
        {"<a>R&D</a>", "1: &D begins no reference that XML knows"},
        {"<a b='&#0;'/>", "1: &#0; begins no reference that XML knows"},
        {"<a>&#xD800;</a>", "1: &#xD800; begins no reference that XML knows"},
        {"<a>\n\x01</a>",
         "2: there is a character that XML cannot hold, or a byte that is no UTF-8"},
        {"<a>\xFF</a>", "1: there is a character that XML cannot hold, or a byte that is no UTF-8"},
        {std::string("<\0a/>", 5),
         "1: there is a character that XML cannot hold, or a byte that is no UTF-8"},
        {"<?xml version='1.0' encoding='ISO-8859-1'?><a/>",
         "1: the encoding is ISO-8859-1; it must be UTF-8"},
        {"<?xml version='1.0' encoding=?><a/>", "1: the declaration is malformed"},
        {"<a/><?xml version='1.0'?>", "1: a declaration stands elsewhere than at the beginning"},
        {"<a b='1' b='2'/>", "1: the attribute b stands twice"},
        {"<a b=1/>", "1: the attribute b has no value in quotes"},
        {"<a b/>", "1: the attribute b has no value in quotes"},
        {"<a b='<'/>", "1: a < stands in an attribute"},
        {"<a b='", "1: ' is missing"},
        {"<a 1='b'/>", "1: the element a is malformed"},
        {"<1/>", "1: a name is missing"},
        {"<a>]]></a>", "1: ]]> stands in a text"},
        {"<a><!-- -- --></a>", "1: -- stands in a comment"},
        {"<a><!-- ", "1: --> is missing"},
        {"<a><![CDATA[", "1: ]]> is missing"},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.content);
        expectRefusal(merge(row.content), {row.mistake});
    }
}

TEST_F(Merge, RefusesWhatIsTooLarge)
{
    m_zav.shell("cd " + m_zav.file("") + "; truncate -s 129M t.xlf");
    CommandResult result = mergeFile();
    EXPECT_EQ(result.errors, "t.xlf: is larger than 128 MiB\nzav: not merged: t.xlf: 1 mistake\n");
    EXPECT_EQ(result.status, 1);
    m_zav.shell("cd " + m_zav.file("") +
                "; { echo '<a>'; yes '<b/>' | head -n 4000000; echo '</a>'; } >t.xlf");
    result = mergeFile();
    EXPECT_EQ(result.errors,
              "t.xlf:4000001: there are more than 4000000 elements and attributes\n"
              "zav: not merged: t.xlf: 1 mistake\n");
    EXPECT_EQ(result.status, 1);
}

TEST_F(Merge, TakesWhatOtherToolsWrite)
{
    const CommandResult result = merge(
        "\xEF\xBB\xBF<?xml version='1.0' encoding='utf-8' standalone='yes'?>\n<?a b?>"
        "<!-- c --><n:xliff version='1.1'><n:file original=';from=1;to=3'><n:header/><n:body>"
        "<n:group><n:trans-unit id='7/name' a = 'b'\n><n:source>motor</n:source><n:target>"
        "moteur</n:target><n:alt-trans><n:target>mot</n:target></n:alt-trans></n:trans-unit >"
        "</n:group></n:body></n:file><n:file original='b;from=1;to=9'><n:body><n:trans-unit "
        "id='7/name'><n:source>motor</n:source><n:target>Motor</n:target></n:trans-unit>"
        "</n:body></n:file></n:xliff>");
    EXPECT_NE(result.output.find("changed       0\nadded         2\n"), std::string::npos)
        << result.errors;
    EXPECT_EQ(texts(),
              "1|7|1|motor|the motor||c|wait\n"
              "2|7|3|moteur|NULL|||NULL\n"
              "3|7|9|Motor|NULL|||NULL\n"
              "4|12|1|door|the door|the door %d|c|close\n"
              "5|12|3|porte|p|la porte %d|c|\n");
}

TEST_F(Merge, RefusesAFileThatCannotTravel)
{
    runSql(m_zav.file("faults.db"),
           "CREATE TABLE teams(a); INSERT INTO descriptions VALUES(20,99,1,'','','','','')");
    const std::string translations = xliff(unit("7/name", "motor", target("moteur")));
    const CommandResult result = merge(translations);
    EXPECT_EQ(result.errors,
              "faults.db: the table teams is your own; --drop-own leaves it out\n"
              "faults.db: text of fault type 99, language 1: there is no fault type 99\n"
              "zav: not merged: faults.db: 2 things cannot travel\n");
    EXPECT_EQ(result.status, 1);
    runSql(m_zav.file("faults.db"), "DELETE FROM descriptions WHERE id=20");
    EXPECT_EQ(merge(translations, "--drop-own").status, 0);
}

TEST_F(Merge, RefusesMoreTextsThanThereAreIds)
{
    runSql(
        m_zav.file("faults.db"),
        "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM n WHERE i<65532) INSERT INTO "
        "descriptions SELECT i+100,7,i+3,'n','s','d','c','r' FROM n");
    expectRefusal(merge(xliff(unit("7/name", "motor", target("moteur")))),
                  {" with it there are 65536 texts; a file holds 65535"});
}

TEST_F(Merge, ReplacesAFileOnlyIfAsked)
{
    setContents(m_zav.file("new.db"), "precious");
    const std::string translations = xliff(unit("7/name", "motor", target("moteur")));
    CommandResult result = merge(translations);
    EXPECT_EQ(result.errors, "zav: not merged: new.db: is there already; --force replaces it\n");
    EXPECT_EQ(result.status, 3);
    EXPECT_EQ(contents(m_zav.file("new.db")), "precious");
    EXPECT_EQ(merge(translations, "--force --release 9").status, 0);
    EXPECT_EQ(m_zav.shell("sqlite3 " + m_zav.file("new.db") + " 'PRAGMA user_version'").output,
              "9\n");
}

TEST_F(Merge, SaysWhatCannotBeRead)
{
    CommandResult result = mergeFile();
    EXPECT_EQ(result.errors, "zav: not merged: t.xlf: cannot be read: No such file or directory\n");
    EXPECT_EQ(result.status, 3);
    result = m_zav.shell("cd " + m_zav.file("") + "; zav merge faults.db . new.db");
    EXPECT_EQ(result.errors, "zav: not merged: .: cannot be read: Is a directory\n");
    EXPECT_EQ(result.status, 3);
    result = m_zav.shell("cd " + m_zav.file("") + "; zav merge none.db t.xlf new.db");
    EXPECT_EQ(result.status, 3);
}

}  // namespace
