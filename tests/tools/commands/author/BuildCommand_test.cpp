#include <gtest/gtest.h>
#include <sqlite3.h>

#include <filesystem>

#include "support/database.h"
#include "tools/ZavCommand.h"

namespace {

const char* const FAULTS =
    "code,alias,type,bug,clear_after_cycle_nr\r\n"
    "7,\\N,info,4294967295,\\N\r\n"
    "12,E12,error,0,3\r\n";
const char* const TEXTS_HEADER = "code,name,short_description,description,comment,remedy\r\n";

class Build : public testing::Test {
protected:
    void SetUp() override
    {
        std::filesystem::create_directory(m_zav.file("src"));
        write("faults.csv", FAULTS);
    }

    void write(const std::string& name, const std::string& content) const
    {
        setContents(m_zav.file("src/" + name), content);
    }

    void writeTexts(int language, const std::string& records) const
    {
        write("texts-" + std::to_string(language) + ".csv", TEXTS_HEADER + records);
    }

    CommandResult build(const std::string& options = "") const
    {
        return m_zav.shell("cd " + m_zav.file("") + "; zav build src faults.db " + options);
    }

    std::string rows(const std::string& query) const
    {
        return m_zav
            .shell("sqlite3 -readonly -nullvalue NULL " + m_zav.file("faults.db") + " \"" + query +
                   "\"")
            .output;
    }

    void expectMistakes(const std::vector<std::string>& mistakes) const
    {
        const CommandResult result = build();
        std::string errors;
        for (const std::string& mistake : mistakes) {
            errors += "src" + mistake + "\n";
        }
        EXPECT_EQ(result.errors, errors +
                                     "zav: not built: src: " + std::to_string(mistakes.size()) +
                                     (mistakes.size() == 1 ? " mistake\n" : " mistakes\n"));
        EXPECT_EQ(result.output, "");
        EXPECT_EQ(result.status, 1);
        EXPECT_FALSE(std::filesystem::exists(m_zav.file("faults.db")));
    }

    ZavCommand m_zav;
};

TEST_F(Build, MakesADatabaseOfSources)
{
    writeTexts(30, "12,n,s,d,c,r\r\n");
    writeTexts(
        1, "12,\"a,b\",\"say \"\"x\"\"\",\"two\nlines\",\\\\N,\\\\\\N\r\n7,n,s,\\N, x,Größe;\r\n");
    const CommandResult result = build("--release 9 --format json");
    EXPECT_EQ(
        result.output.substr(0, result.output.find("\"content\"")),
        "{\n  \"file\": \"faults.db\",\n  \"old\": null,\n  \"new\": {\n    \"release\": 9,\n    ");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(rows("SELECT * FROM fault_type_definition"),
              "7|NULL|info|4294967295|NULL\n12|E12|error|0|3\n");
    EXPECT_EQ(rows("SELECT * FROM descriptions"),
              "1|7|1|n|s|NULL| x|Größe;\n"
              "2|12|1|a,b|say \"x\"|two\nlines|\\N|\\\\N\n"
              "3|12|30|n|s|d|c|r\n");
    EXPECT_EQ(rows("PRAGMA user_version"), "9\n");
    EXPECT_EQ(
        m_zav.shell("sqlite3 -readonly " + m_zav.file("faults.db") + " .schema | grep -v sqlite_")
            .output,
        m_zav
            .shell(R"(sqlite3 ':memory:' '.read ")" ZAV_SOURCE_DIR
                   R"(/db/schema.sql"' .schema | grep -v sqlite_)")
            .output);
}

TEST_F(Build, TakesWhatSpreadsheetsWrite)
{
    write("faults.csv",
          "\xEF\xBB\xBF"
          "alias;code;type;clear_after_cycle_nr;bug\n"
          "\n"
          "\"a;,\";12;\"error\";\\N;\"5\"\n"
          "b;7;info;3;0");
    const CommandResult result = build();
    EXPECT_EQ(result.errors, "");
    EXPECT_EQ(rows("SELECT * FROM fault_type_definition"), "7|b|info|0|3\n12|a;,|error|5|NULL\n");
}

TEST_F(Build, FindsAllMistakesAtOnce)
{
    write("faults.csv",
          "code,alias,type,bug,clear_after_cycle_nr\r\n"
          "7,a,\"two\nlines\",x,65536\r\n"
          ",a,b,1,1\r\n"
          "8,a\"b,b,1,1\r\n"
          "9,\"a\"b,b,1,1\r\n"
          "10,a,b,1\r\n"
          "11,a\rb,c,1,1\r\n"
          "12,\xFF,b,-1,+1\r\n"
          "7,a,b,1, 1\r\n"
          "65536,a,b,4294967296,1\r\n"
          "\\N,a,b,1,1\r\n"
          "13,a,b,1,\"1\r\n");
    write("texts-01.csv", "");
    write("texts-en.csv", "");
    write("texts-65536.csv", "");
    write("texts-2.csv", "");
    write("texts-4.csv", "code,name,text\r\n");
    writeTexts(3, "7,a,b,c,d,e\r\n12,a\x01,b,c,d,e\r\n99,a,b,c,d,e\r\n7,a,b,c,d,e\r\n");
    const std::string name =
        ".csv: the name tells no language; it must be texts-N.csv with a number from 0 to 65535";
    expectMistakes({
        R"(/faults.csv:2: bug: "x" is no whole number from 0 to 4294967295, or \N)",
        R"(/faults.csv:2: clear_after_cycle_nr: "65536" is no whole number from 0 to 65535, or \N)",
        "/faults.csv:4: code: \"\" is no whole number from 0 to 65535",
        "/faults.csv:5: a quote stands in a text without quotes around it",
        "/faults.csv:6: a text goes on after its closing quote",
        "/faults.csv:7: there are 4 cells, not 5",
        "/faults.csv:8: a carriage return stands in a text without quotes around it",
        "/faults.csv:9: alias: the text holds bytes that are no UTF-8",
        R"(/faults.csv:9: bug: "-1" is no whole number from 0 to 4294967295, or \N)",
        R"(/faults.csv:9: clear_after_cycle_nr: "+1" is no whole number from 0 to 65535, or \N)",
        R"(/faults.csv:10: clear_after_cycle_nr: " 1" is no whole number from 0 to 65535, or \N)",
        "/faults.csv:10: code: the fault type 7 is defined in faults.csv:2 already",
        "/faults.csv:11: code: \"65536\" is no whole number from 0 to 65535",
        R"(/faults.csv:11: bug: "4294967296" is no whole number from 0 to 4294967295, or \N)",
        "/faults.csv:12: code: the code is missing",
        "/faults.csv:13: the closing quote of a text is missing",
        "/texts-01" + name,
        "/texts-65536" + name,
        "/texts-en" + name,
        "/texts-2.csv:1: the names of the columns are missing",
        "/texts-3.csv:5: code: the fault type 7 has a text in texts-3.csv:2 already",
        std::string("/texts-4.csv:1: the columns are code,name,text; they must be ") +
            "code,name,short_description,description,comment,remedy",
    });
}

TEST_F(Build, FindsTextsWithoutAFaultType)
{
    writeTexts(1, "7,a,b,c,d,e\r\n99,a,b,c,d,e\r\n");
    expectMistakes({"/texts-1.csv:3: code: there is no fault type 99"});
}

TEST_F(Build, RefusesMoreTextsThanThereAreIds)
{
    m_zav.shell("cd " + m_zav.file("src") +
                "; { echo code,alias,type,bug,clear_after_cycle_nr; seq -f %g,E,error,0,0 32768; } "
                ">faults.csv; { echo code,name,short_description,description,comment,remedy; "
                "seq -f %g,n,s,d,c,r 32768; } >texts-1.csv; cp texts-1.csv texts-2.csv");
    expectMistakes({": there are 65536 texts; a file holds 65535, each with an id of 16 bits"});
    m_zav.shell("cd " + m_zav.file("src") + "; sed -i 2d texts-2.csv");
    EXPECT_EQ(build().status, 0);
    EXPECT_EQ(rows("SELECT max(id), count(*) FROM descriptions"), "65535|65535\n");
}

TEST_F(Build, ReplacesAFileOnlyIfAsked)
{
    setContents(m_zav.file("faults.db"), "precious");
    CommandResult result = build();
    EXPECT_EQ(result.errors, "zav: not built: faults.db: is there already; --force replaces it\n");
    EXPECT_EQ(result.status, 3);
    EXPECT_EQ(contents(m_zav.file("faults.db")), "precious");
    result = build("--force");
    EXPECT_EQ(result.errors, "");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(m_zav.shell("ls " + m_zav.file("") + " | grep zav-new").output, "");
}

TEST_F(Build, ShowsWarnings)
{
    write("faults.csv", "code,alias,type,bug,clear_after_cycle_nr\r\n1,E,x,0,0\r\n2,E,x,0,0\r\n");
    const CommandResult result = build();
    EXPECT_EQ(
        result.errors,
        "faults.db: fault_type_definition code=2, alias: warning: \"E\": the alias of code=1, "
        "too; give each its own [duplicate-alias]\n"
        "faults.db: 1 warning\n");
    EXPECT_EQ(result.status, 0);
}

TEST_F(Build, SaysWhatCannotBeRead)
{
    std::filesystem::remove(m_zav.file("src/faults.csv"));
    CommandResult result = build();
    EXPECT_EQ(result.errors,
              "zav: not built: src/faults.csv: cannot be read: No such file or directory\n");
    EXPECT_EQ(result.status, 3);
    result = m_zav.shell("cd " + m_zav.file("") + "; zav build src missing/faults.db");
    EXPECT_EQ(result.status, 3);
}

TEST_F(Build, IsTheOtherWayOfExport)
{
    m_zav.shell("cd " + m_zav.file("") +
                "; rm -r src; cat '" ZAV_SOURCE_DIR "/db/schema.sql' '" ZAV_SOURCE_DIR
                "/db/sample.sql' | sqlite3 -bail sample.db");
    const CommandResult result =
        m_zav.shell("cd " + m_zav.file("") +
                    "; zav export sample.db one >&2; zav build one one.db --release 3 >&2; zav "
                    "export one.db two "
                    ">&2; zav build two two.db --release 3 >&2; diff -r one two && cmp one.db "
                    "two.db && echo same; "
                    "zav info --format csv sample.db one.db | cut -d, -f3 | uniq -c | wc -l");
    EXPECT_EQ(result.output, "same\n2\n");
}

TEST_F(Build, MakesTheSameBytesWhateverTheSettings)
{
    writeTexts(1, "7,a,b,c,d,e\r\n");
    const CommandResult result = m_zav.shell(
        "cd " + m_zav.file("") +
        "; zav build src one.db >&2; mkdir other; cp src/texts-1.csv other; "
        "{ sed -n 1p src/faults.csv; sed -n 3p src/faults.csv; sed -n 2p src/faults.csv; } "
        ">other/faults.csv; umask 077; TZ=Asia/Tokyo LC_ALL=C.UTF-8 zav build other two.db >&2; "
        "cmp one.db two.db && echo same");
    EXPECT_EQ(result.output, "same\n");
}

}  // namespace
