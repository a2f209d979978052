#include <gtest/gtest.h>

#include <sstream>

#include "tools/ZavCommand.h"

namespace {

const std::string MANUAL = ZAV_SOURCE_DIR "/tools/zav.1";
const std::string COMPLETION = ZAV_SOURCE_DIR "/tools/completion/zav";

/// What bash offers at the end of a line, in the order of its sorting.
std::string offered(const ZavCommand& zav, const std::string& line)
{
    return zav
        .shell("bash -c '. " + COMPLETION + "; cd " + zav.file("") + "; COMP_WORDS=(" + line +
               "); COMP_CWORD=$((${#COMP_WORDS[@]} - 1)); _zav; echo \"${COMPREPLY[*]}\"'")
        .output;
}

TEST(Completion, OffersWhatFits)
{
    struct Case {
        std::string line;
        std::string words;
    };
    const Case cases[] = {
        {"zav \"\"", "--format --debug --help --version faults fault texts sql check"},
        {"zav fa", "faults fault"},
        {"zav --format \"\"", "table json csv"},
        {"zav --format json che", "check"},
        {"zav faults --f", "--format"},
        {"zav faults fau", "faults.db"},
        {"zav texts --l", "--language"},
        {"zav texts --language \"\"", ""},
        {"zav sql faults.db up", "update"},
        {"zav sql faults.db insert --table d", "descriptions"},
        {"zav sql faults.db insert --f", ""},
    };
    const ZavCommand zav;
    zav.database();
    for (const Case& row : cases) {
        EXPECT_EQ(offered(zav, row.line), row.words + "\n") << row.line;
    }
}

TEST(Manual, IsWellFormed)
{
    const ZavCommand zav;
    const CommandResult result = zav.shell("groff -mandoc -Tutf8 -ww -z " + MANUAL);
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.errors, "");
    EXPECT_EQ(result.status, 0);
}

TEST(Manual, NamesAllOptionsAndCommands)
{
    const ZavCommand zav;
    std::istringstream words(
        zav.shell("{ zav --help; zav texts --help; zav sql --help; } | grep -oE '^  (-h,)?[a-z-]+'"
                  " | sed 's/-h,//'")
            .output);
    const std::string manual = zav.shell("groff -mandoc -Tascii -P-cbou " + MANUAL).output;
    int count = 0;
    for (std::string word; words >> word; ++count) {
        EXPECT_NE(manual.find(word), std::string::npos) << word;
    }
    EXPECT_GT(count, 10);
}

TEST(Manual, AndHelpEndAnImportAtItsFirstFailure)
{
    const ZavCommand zav;
    const CommandResult imports =
        zav.shell("{ zav --help; cat " + MANUAL + "; } | grep -o 'insert | sqlite3 .*copy.db'");
    EXPECT_EQ(imports.output,
              "insert | sqlite3 -bail copy.db\n"
              "insert | sqlite3 -bail copy.db\n");
}

/// The statements that commands print, without their comments and layout.
std::string statements(const ZavCommand& zav, const std::string& commands)
{
    return zav.shell(commands + " | sed 's/--.*//' | tr -d ' \\n'").output;
}

TEST(Manual, ShowsTheSchema)
{
    const ZavCommand zav;
    EXPECT_EQ(statements(zav, "sed -n '/^CREATE/,/^\\.Ed/p' " + MANUAL + " | grep -v '^\\.Ed'"),
              statements(zav, "cat " ZAV_SOURCE_DIR "/db/schema.sql"));
}

TEST(Manual, CopiesAFileAsItSays)
{
    const ZavCommand zav;
    zav.database("INSERT INTO fault_type_definition VALUES(12,'E012','error',0,3)");
    const CommandResult result =
        zav.shell("cd " + zav.file("") + "; grep '^.Dl.*copy.db' " + MANUAL +
                  " | cut -d' ' -f3- | sed 's#/usr/share/zav#" ZAV_SOURCE_DIR
                  "/db#' >copy.sh; . ./copy.sh; zav faults --format csv copy.db");
    EXPECT_EQ(result.output,
              "code,alias,type,bug,clear_after_cycle_nr\r\n"
              "12,E012,error,0,3\r\n");
    EXPECT_EQ(result.errors, "");
}

TEST(Manual, NamesAllFindings)
{
    const ZavCommand zav;
    std::istringstream kinds(
        zav.shell("grep -ohE '\"[a-z0-9]+-[a-z0-9]+\"|\"(null|quote)\"' " ZAV_SOURCE_DIR
                  "/tools/check/*.cpp | tr -d '\"'"
                  " | sort -u")
            .output);
    const std::string manual = contentOf(MANUAL);
    int count = 0;
    for (std::string kind; kinds >> kind; ++count) {
        EXPECT_NE(manual.find(kind), std::string::npos) << kind;
    }
    EXPECT_GT(count, 15);
}

}  // namespace
