#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

#include "tools/ZavCommand.h"

namespace {

const std::string MANUAL_FILE = ZAV_SOURCE_DIR "/tools/zav.1";

// As words of a shell.
const std::string MANUAL = "'" + MANUAL_FILE + "'";
const std::string COMPLETION = "'" ZAV_SOURCE_DIR "/tools/completion/zav'";

/// What bash offers at the end of a line, in the order of its sorting.
std::string offered(const ZavCommand& zav, const std::string& line)
{
    return zav
        .shell(R"(bash -c 'zav() { $ZAV "$@"; }; . "$0"; cd )" + zav.file("work") +
               "; COMP_WORDS=(" + line +
               R"(); COMP_CWORD=$((${#COMP_WORDS[@]} - 1)); _zav; echo "${COMPREPLY[*]}"' )" +
               COMPLETION)
        .output;
}

TEST(Completion, OffersWhatFits)
{
    struct Case {
        std::string line;
        std::string words;
    };
    const Case cases[] = {
        {"zav \"\"",
         "--format --debug --help --version faults fault texts sql check info install search html "
         "export build diff translate merge help"},
        {"zav fa", "faults fault"},
        {"zav --format \"\"", "table json csv"},
        {"zav --format = j", "json"},
        {"zav check --format = s", "sarif"},
        {"zav install --format = ", "table json"},
        {"zav --format json che", "check"},
        {"zav help ins", "install"},
        {"zav fault faults.db \"\"", "7 12 E12 E7"},
        {"zav fault faults.db E1", "E12"},
        {"zav faults faults.db --columns \"\"", "code alias type bug clear_after_cycle_nr"},
        {"zav texts faults.db --columns a", "alias"},
        {"zav texts faults.db --columns name,a", "name,alias"},
        {"zav check --ignore null,not-a", "null,not-a-number"},
        {"zav fault faults.db 7 --columns \"\"",
         "code alias type bug clear_after_cycle_nr id id_fault_type id_language name "
         "short_description description comment remedy"},
        {"zav texts --st", "--stored"},
        {"zav fault faults.db 1", "12"},
        {"zav texts faults.db --code \"\"", "7 12"},
        {"zav texts --language \"\"", "2 30"},
        {"zav info --source \"\"", "2 30"},
        {"zav check \"\"", "faults.db other.db folder a.txt"},
        {"zav install faults.db \"\"", "faults.db other.db folder a.txt"},
        {"zav install faults.db other.db \"\"", ""},
        {"zav install --d", "--downgrade"},
        {"zav export faults.db \"\"", "faults.db other.db folder a.txt"},
        {"zav diff --format m", "markdown"},
        {"zav diff faults.db other.db --code \"\"", "7 12"},
        {"zav diff faults.db other.db --language 3", "30"},
        {"zav search faults.db --field na", "name"},
        {"zav search faults.db \"\"", ""},
        {"zav html faults.db --language 3", "30"},
        {"zav html --ti", "--title"},
        {"zav export --dr", "--drop-own"},
        {"zav build folder --release \"\"", ""},
        {"zav build --force folder o", "other.db"},
        {"zav build --format \"\"", "table json"},
        {"zav translate faults.db --to 3", "30"},
        {"zav translate faults.db --mi", "--missing"},
        {"zav translate faults.db \"\"", ""},
        {"zav merge faults.db a", "a.txt"},
        {"zav merge --drop-own faults.db a.txt o", "other.db"},
        {"zav merge faults.db a.txt other.db \"\"", ""},
        {"zav merge --format \"\"", "table json"},
        {"zav faults --f", "--format"},
        {"zav faults fau", "faults.db"},
        {"zav texts --l", "--language"},
        {"zav check --format s", "sarif"},
        {"zav check --fail-on \"\"", "error warning note"},
        {"zav check --i", "--ignore"},
        {"zav check --ignore dup", "duplicate-code duplicate-id duplicate-text duplicate-alias"},
        {"zav check --languages \"\"", "2 30"},
        {"zav sql faults.db up", "update"},
        {"zav sql faults.db insert --table d", "descriptions"},
        {"zav sql faults.db insert --f", ""},
    };
    const ZavCommand zav;
    zav.database(
        "INSERT INTO fault_type_definition VALUES(12,'E12','error',0,0),(7,'E7','error',0,0);"
        "INSERT INTO descriptions VALUES(1,7,30,'','','','',''),(2,7,2,'','','','','')");
    zav.shell(
        "cd " + zav.file("") +
        "; mkdir -p work/folder; cp faults.db work; cp faults.db work/other.db; : >work/a.txt");
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

TEST(Manual, IsOfTheUserCommands)
{
    const ZavCommand zav;
    EXPECT_EQ(
        zav.shell("groff -mandoc -Tascii -P-cbou " + MANUAL + " | grep -m 1 . | tr -s ' '").output,
        "ZAV(1) User Commands ZAV(1)\n");
}

TEST(Manual, NamesAllOptionsAndCommands)
{
    const ZavCommand zav;
    std::istringstream words(
        zav.shell("{ zav --help; zav texts --help; zav sql --help; zav check "
                  "--help; zav info --help; zav install --help; zav export "
                  "--help; zav build --help; zav html --help; zav search --help; zav diff "
                  "--help; zav translate --help; zav merge --help; } | grep -oE '^  (-h,)?[a-z-]+'"
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
              statements(zav, "cat '" ZAV_SOURCE_DIR "/db/schema.sql'"));
}

TEST(Manual, CopiesAFileAsItSays)
{
    const ZavCommand zav;
    zav.database("INSERT INTO fault_type_definition VALUES(12,'E012','error',0,3)");
    const CommandResult result =
        zav.shell("cd " + zav.file("") +
                  "; ln -s '" ZAV_SOURCE_DIR "/db' db; grep '^.Dl.*copy.db' " + MANUAL +
                  " | cut -d' ' -f3- | sed 's#/usr/share/zav#db#' >copy.sh; . ./copy.sh;"
                  " zav faults --format csv copy.db");
    EXPECT_EQ(result.output,
              "code,alias,type,bug,clear_after_cycle_nr\r\n"
              "12,E012,error,0,3\r\n");
    EXPECT_EQ(result.errors, "");
}

/// The kinds of finding with their severities and explanations.
TEST(Manual, ListsTheKindsAsTheHelpDoes)
{
    const ZavCommand zav;
    const std::string help =
        zav.shell(
               "zav check --help | sed -nE 's/^  ([a-z0-9-]+) +(error|warning|note) +(.*)/"
               "\\1 \\2 \\3./p'")
            .output;
    const std::string manual =
        zav.shell(
               "sed -nE '/^\\.It Cm [a-z0-9-]+ Pq (error|warning|note)$/{N;"
               "s/^.It Cm ([a-z0-9-]+) Pq (error|warning|note).(.*)/\\1 \\2 \\3/;p}' " +
               MANUAL)
            .output;
    EXPECT_EQ(manual, help);
    EXPECT_EQ(std::count(help.begin(), help.end(), '\n'), 31);
}

/// A room may use those that come after it, and text alone is used by all.
TEST(Rooms, IncludeOneWayOnly)
{
    const ZavCommand zav;
    struct Room {
        std::string name;
        std::string others;  ///< that it must not use
    };
    const Room rooms[] = {{"check", "commands|output"},
                          {"output", "commands|check"},
                          {"database", "commands|check|output"},
                          {"text", "commands|check|output|database"}};
    for (const Room& room : rooms) {
        const CommandResult found = zav.shell("grep -rnE '#include \"(" + room.others +
                                              ")/' '" ZAV_SOURCE_DIR "/tools/" + room.name + "'");
        EXPECT_EQ(found.output, "");
        EXPECT_EQ(found.status, 1);
    }
}

}  // namespace
