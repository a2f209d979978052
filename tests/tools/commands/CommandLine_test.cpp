#include <gtest/gtest.h>

#include "tools/ZavCommand.h"

namespace {

TEST(CommandLine, RefusesWhatMakesNoSense)
{
    struct Case {
        std::string arguments;
        std::string message;
    };
    const Case cases[] = {
        {"", "A subcommand is required"},
        {"frobnicate", "not understood: frobnicate"},
        {"faults", "FILE is required"},
        {"faults FILE check FILE", "not understood: check FILE"},
        {"frobnicate --format xml FILE", "not understood: frobnicate FILE"},
        {"faults FILE other", "not understood: other"},
        {"faults FILE --colour", "not understood: --colour"},
        {"faults FILE --format xml", "--format: \"xml\" is none of table|json|csv"},
        {"faults FILE --debug much",
         "--debug: \"much\" is no number from -2147483648 to 2147483647"},
        {"fault FILE", "CODE is required"},
        {"sql FILE", "STATEMENT is required"},
        {"sql FILE delete", "STATEMENT: \"delete\" is none of insert|update"},
        {"sql FILE insert --table faults",
         "--table: \"faults\" is none of fault_type_definition|descriptions|all"},
        {"faults FILE --format sarif", "--format: \"sarif\" is none of table|json|csv"},
        {"check FILE --format xml", "--format: \"xml\" is none of table|json|csv|sarif"},
        {"check FILE --fail-on never", "--fail-on: \"never\" is none of error|warning|note"},
        {"sql FILE insert --format json", "--format: zav sql writes nothing but SQL"},
    };
    const ZavCommand zav;
    for (const Case& row : cases) {
        const CommandResult result = zav.run(row.arguments);
        EXPECT_EQ(result.output, "") << row.arguments;
        EXPECT_EQ(result.errors, "zav: " + row.message + "\nzav: see zav --help\n");
        EXPECT_EQ(result.status, 2) << row.arguments;
    }
}

TEST(CommandLine, PrintsItsVersion)
{
    const ZavCommand zav;
    const CommandResult result = zav.run("--version");
    EXPECT_EQ(result.output, "zav " ZAV_VERSION "\n");
    EXPECT_EQ(result.errors, "");
    EXPECT_EQ(result.status, 0);
}

TEST(CommandLine, HelpNamesCommandsOptionsAndExamples)
{
    const ZavCommand zav;
    const CommandResult result = zav.run("--help");
    EXPECT_EQ(result.output, R"(Looks at a database of fault definitions.
Usage: zav [OPTIONS] SUBCOMMAND

Options:
  -h,--help                   Print this help message and exit
  --version                   Print the version and exit
  --format table|json|csv     How results are written; table unless given
  --debug LEVEL               The library's lines on standard error: 0 errors only, 1 and 2 more

Subcommands:
  faults                      Show all fault types
  fault                       Show one fault type, with its texts
  texts                       Show the texts of fault types
  sql                         Write the statement of every row, to be run
  check                       Find what would surprise an application

Examples:
  zav faults faults.db                              all fault types
  zav fault faults.db 17                            one, with its texts
  zav texts faults.db --language 2 --format csv     the texts in one language, for a spreadsheet
  zav sql faults.db insert | sqlite3 -bail copy.db  into a file that has the empty tables
  zav check faults.db                               what would surprise an application

Exit status: 0 done, 1 not found or findings, 2 wrong usage,
3 the file cannot be read or the output cannot be written.
)");
    EXPECT_EQ(result.errors, "");
    EXPECT_EQ(result.status, 0);
}

TEST(CommandLine, EachCommandHasHelp)
{
    const ZavCommand zav;
    EXPECT_EQ(zav.run("texts --help").output, R"(Show the texts of fault types
Usage: zav texts [OPTIONS] FILE

Positionals:
  FILE REQUIRED               The database file

Options:
  -h,--help                   Print this help message and exit
  --code CODE                 Only those of this fault type
  --language LANGUAGE         Only those in this language

Further options, examples and the exit status: zav --help
)");
    for (const std::string command : {"faults", "fault", "sql", "check"}) {
        const CommandResult result = zav.run(command + " --help");
        EXPECT_NE(result.output.find("Usage: zav " + command), std::string::npos) << result.output;
        EXPECT_EQ(result.status, 0);
    }
}

TEST(CommandLine, DebugLevelSendsTheLibrarysLinesToStandardError)
{
    const ZavCommand zav;
    const std::string file = zav.database();
    const std::string ok = "[DEBUG] ZAV::openDb() OK\n";
    const std::string path = "[DEBUG] ZAV::openDb() " + file + "\n";
    struct Case {
        std::string options;
        std::string errors;
    };
    const Case cases[] = {{"", ""},          {"--debug 0", ""},        {"--debug=-1", ""},
                          {"--debug 1", ok}, {"--debug 2", path + ok}, {"--debug 9", path + ok}};
    for (const Case& row : cases) {
        const CommandResult result = zav.run("faults --format json " + row.options + " " + file);
        EXPECT_EQ(result.output, "[]\n") << row.options;
        EXPECT_EQ(result.errors, row.errors) << row.options;
    }
}

TEST(CommandLine, OptionsStandBeforeOrAfterTheCommand)
{
    const ZavCommand zav;
    const std::string file = zav.database();
    EXPECT_EQ(zav.run("--format json --debug 1 faults " + file).output, "[]\n");
    EXPECT_EQ(zav.run("faults --format json " + file + " --debug 1").output, "[]\n");
}

TEST(CommandLine, TakesAFileOfAnyName)
{
    const ZavCommand zav;
    zav.database();
    const std::string inFolder = "cd " + zav.file("") + "; cp faults.db ./";
    for (const std::string name : {"-dash.db", "'file:uri.db?mode=memory'", "'\"odd\" name.db'"}) {
        std::string line = inFolder;
        line.append(name).append(" && zav check -- ").append(name);
        EXPECT_NE(zav.shell(line).output.find(": no findings\n"), std::string::npos) << name;
    }
}

}  // namespace
