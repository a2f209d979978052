#include <gtest/gtest.h>

#include "support/database.h"
#include "tools/ZavCommand.h"

namespace {

const char* const ROWS =
    "INSERT INTO fault_type_definition VALUES"
    "(12,'E12','error',0,3),(7,NULL,'info',4294967295,NULL);"
    "INSERT INTO descriptions VALUES"
    "(9,12,1,'a,b','say \"x\"','two' || char(10) || 'lines','\\N','\\\\N'),"
    "(3,7,1,'n','',NULL,' ','Größe;'),(1,12,30,'n','s','d','c','r')";

class Export : public testing::Test {
protected:
    CommandResult exportTo(const std::string& folder, const std::string& file,
                           const std::string& options = "") const
    {
        return m_zav.shell("cd " + m_zav.file("") + "; zav export " + file + " " + folder + " " +
                           options);
    }

    /// All files of a folder, each after its name.
    std::string filesOf(const std::string& folder) const
    {
        return m_zav
            .shell("cd " + m_zav.file(folder) + "; for f in *; do echo \"== $f\"; cat $f; done")
            .output;
    }

    /// @param what  each thing that cannot travel.
    void expectRefusal(const CommandResult& result, const std::vector<std::string>& what) const
    {
        std::string errors;
        for (const std::string& thing : what) {
            errors += "faults.db: " + thing + "\n";
        }
        errors += "zav: not exported: faults.db: " + std::to_string(what.size()) +
                  (what.size() == 1 ? " thing" : " things") + " cannot travel\n";
        EXPECT_EQ(result.errors, errors);
        EXPECT_EQ(result.output, "");
        EXPECT_EQ(result.status, 1);
    }

    ZavCommand m_zav;
};

TEST_F(Export, WritesAFileOfFaultTypesAndOnePerLanguage)
{
    m_zav.database(ROWS);
    const CommandResult result = exportTo("a/b", "faults.db");
    EXPECT_EQ(result.output,
              "file              size\n"
              "----------------  ----\n"
              "a/b/faults.csv      85\n"
              "a/b/texts-1.csv    119\n"
              "a/b/texts-30.csv    70\n");
    EXPECT_EQ(result.errors, "");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(filesOf("a/b"),
              "== faults.csv\n"
              "code,alias,type,bug,clear_after_cycle_nr\r\n"
              "7,\\N,info,4294967295,\\N\r\n"
              "12,E12,error,0,3\r\n"
              "== texts-1.csv\n"
              "code,name,short_description,description,comment,remedy\r\n"
              "7,n,,\\N, ,Größe;\r\n"
              "12,\"a,b\",\"say \"\"x\"\"\",\"two\nlines\",\\\\N,\\\\\\N\r\n"
              "== texts-30.csv\n"
              "code,name,short_description,description,comment,remedy\r\n"
              "12,n,s,d,c,r\r\n");
}

TEST_F(Export, WritesTheSameBytesOfTheSameContent)
{
    runSql(
        m_zav.database(ROWS),
        "UPDATE descriptions SET id=id+50; CREATE TABLE copy AS SELECT * FROM descriptions ORDER "
        "BY id DESC; DELETE FROM descriptions; INSERT INTO descriptions SELECT * FROM copy; DROP "
        "TABLE copy; PRAGMA user_version=7; VACUUM");
    exportTo("one", "faults.db");
    makeDatabase(m_zav.file("other.db"), ROWS);
    exportTo("other", "other.db");
    EXPECT_EQ(filesOf("one"), filesOf("other"));
}

TEST_F(Export, TakesThePlaceOfAnEarlierOne)
{
    m_zav.database(ROWS);
    exportTo("src", "faults.db");
    const std::string before = filesOf("src");
    m_zav.shell("cd " + m_zav.file("src") + "; echo >faults.csv; echo >texts-1.csv");
    EXPECT_EQ(exportTo("src", "faults.db").status, 0);
    EXPECT_EQ(filesOf("src"), before);
}

TEST_F(Export, LeavesOwnPartsOutOnlyIfAsked)
{
    const std::string file = m_zav.database(ROWS);
    exportTo("plain", "faults.db");
    runSql(file,
           "ALTER TABLE descriptions ADD COLUMN author; CREATE TABLE teams(a);"
           "CREATE INDEX by_type ON fault_type_definition(type); CREATE VIEW errors AS SELECT 1;"
           "CREATE TRIGGER t AFTER DELETE ON teams BEGIN SELECT 1; END");
    const std::string hint = " is your own; --drop-own leaves it out";
    expectRefusal(exportTo("src", "faults.db"),
                  {"the index by_type" + hint, "the table teams" + hint, "the trigger t" + hint,
                   "the view errors" + hint, "the column author of descriptions" + hint});
    EXPECT_EQ(m_zav.shell("ls " + m_zav.file("src")).output, "") << "nothing is written";
    EXPECT_EQ(exportTo("src", "faults.db", "--drop-own").status, 0);
    EXPECT_EQ(filesOf("src"), filesOf("plain"));
}

TEST_F(Export, RefusesWhatCannotTravel)
{
    struct Case {
        std::string sql;
        std::vector<std::string> what;
    };
    const Case cases[] = {
        {"INSERT INTO descriptions VALUES(20,99,1,'','','','',''),(21,7,1,'','','','','')",
         {"text of fault type 7, language 1: the fault type 7 has a text already",
          "text of fault type 99, language 1: there is no fault type 99"}},
        {"INSERT INTO fault_type_definition VALUES(70000,'','',0,0),(-1,'','',0,0)",
         {"fault type -1, code: \"-1\" is no whole number from 0 to 65535",
          "fault type 70000, code: \"70000\" is no whole number from 0 to 65535"}},
        {"UPDATE fault_type_definition SET bug='x', clear_after_cycle_nr=1.5 WHERE code=7",
         {R"(fault type 7, bug: "x" is no whole number from 0 to 4294967295, or \N)",
          R"(fault type 7, clear_after_cycle_nr: "1.5" is no whole number from 0 to 65535, or \N)"}},
        {"UPDATE descriptions SET name=x'00', remedy=CAST(x'ff' AS TEXT), comment='a'||char(0) "
         "WHERE id=1",
         {"text of fault type 12, language 30, name: is no text",
          "text of fault type 12, language 30, comment: the text holds a NUL byte",
          "text of fault type 12, language 30, remedy: the text holds bytes that are no UTF-8"}},
        {"UPDATE descriptions SET id_language=NULL WHERE id=1; UPDATE descriptions SET "
         "id_fault_type=NULL WHERE id=3",
         {"text of fault type NULL, language 1, code: the code is missing",
          "text of fault type 12, language NULL: the language is missing"}},
    };
    for (const Case& row : cases) {
        const ZavCommand zav;
        const std::string file = zav.database(ROWS);
        runSql(file, row.sql);
        expectRefusal(zav.shell("cd " + zav.file("") + "; zav export faults.db src --drop-own"),
                      row.what);
        EXPECT_EQ(zav.shell("ls " + zav.file("src")).output, "");
    }
}

TEST_F(Export, RefusesAFolderWithAnotherLanguage)
{
    m_zav.database(ROWS);
    m_zav.shell("cd " + m_zav.file("") +
                "; mkdir src; echo x >src/texts-2.csv; echo >src/notes.csv");
    const CommandResult result = exportTo("src", "faults.db");
    expectRefusal(result, {"src/texts-2.csv: the database has no such language; remove it"});
    EXPECT_EQ(m_zav.shell("ls " + m_zav.file("src")).output, "notes.csv\ntexts-2.csv\n");
}

TEST_F(Export, SaysWhatCannotBeReadOrWritten)
{
    m_zav.database("DROP TABLE descriptions");
    m_zav.shell("cd " + m_zav.file("") + "; : >full; ln -s /dev/full out.csv.zav-new");
    CommandResult result = exportTo("src", "faults.db");
    EXPECT_EQ(result.errors, "zav: faults.db: cannot be read: no such table: descriptions\n");
    EXPECT_EQ(result.status, 3);
    makeDatabase(m_zav.file("whole.db"), ROWS);
    result = exportTo("full", "whole.db");
    EXPECT_EQ(result.errors, "zav: full: cannot be made: Not a directory\n");
    EXPECT_EQ(result.status, 3);
    m_zav.shell("cd " + m_zav.file("") + "; mkdir src; ln -s /dev/full src/texts-1.csv.zav-new");
    result = exportTo("src", "whole.db");
    EXPECT_EQ(result.errors, "zav: src/texts-1.csv: cannot be written: No space left on device\n");
    EXPECT_EQ(result.status, 3);
    EXPECT_EQ(m_zav.shell("ls " + m_zav.file("src")).output, "");
}

}  // namespace
