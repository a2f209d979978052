#include <gtest/gtest.h>

#include "support/runProgram.h"
#include "tools/ZavCommand.h"

namespace {

TEST(CommandLine, RefusesWhatMakesNoSense)
{
    struct Case {
        std::string arguments;
        std::string message;
        std::string command;  ///< whose help is named
    };
    const Case cases[] = {
        {"", "A subcommand is required", ""},
        {"frobnicate", "not understood: frobnicate", ""},
        {"falt 17", "not understood: falt 17; did you mean fault?", ""},
        {"faults", "FILE is required", "faults "},
        {"faults FILE check FILE", "not understood: check FILE", "faults "},
        {"frobnicate --format xml FILE", "not understood: frobnicate FILE", ""},
        {"faults FILE other", "not understood: other", "faults "},
        {"faults FILE --colour", "not understood: --colour", "faults "},
        {"faults FILE --fromat=json", "not understood: --fromat=json; did you mean --format?",
         "faults "},
        {"--verzion", "not understood: --verzion; did you mean --version?", ""},
        {"check FILE --failon note", "not understood: --failon; did you mean --fail-on?", "check "},
        {"faults FILE --format xml", "--format: \"xml\" is none of table|json|csv", "faults "},
        {"faults FILE --debug much",
         "--debug: \"much\" is no number from -2147483648 to 2147483647", "faults "},
        {"--debug 1 check FILE", "--debug: zav check keeps the library silent", "check "},
        {"fault FILE", "CODE|ALIAS is required", "fault "},
        {"fault 101 faults.db", "the file comes first: zav fault faults.db 101", "fault "},
        {"sql FILE", "STATEMENT is required", "sql "},
        {"sql FILE delete", "STATEMENT: \"delete\" is none of insert|update", "sql "},
        {"sql insert FILE", "the file comes first: zav sql FILE insert", "sql "},
        {"sql FILE insert --table faults",
         "--table: \"faults\" is none of fault_type_definition|descriptions|all", "sql "},
        {"sql FILE insert --format json", "--format: zav sql writes nothing but SQL", "sql "},
        {"info", "FILE is required", "info "},
        {"check FILE ''", "FILE: is empty", "check "},
        {"texts ''", "FILE: is empty", "texts "},
        {"install NEW ''", "TARGET: is empty", "install "},
        {"install NEW", "TARGET is required", "install "},
        {"install NEW TARGET --format csv", "--format: \"csv\" is none of table|json", "install "},
        {"install NEW TARGET --expect 0a1",
         "--expect: \"0a1\" is no content hash: these have 64 hexadecimal digits", "install "},
        {"bild", "not understood: bild; did you mean build?", ""},
        {"build", "FOLDER is required", "build "},
        {"build FOLDER FILE --format csv", "--format: \"csv\" is none of table|json", "build "},
        {"build FOLDER FILE --release 2147483648",
         "--release: \"2147483648\" is no number from 0 to 2147483647", "build "},
        {"--debug 1 build FOLDER FILE", "--debug: zav build keeps the library silent", "build "},
        {"export FILE", "FOLDER is required", "export "},
        {"--format table export FILE FOLDER --drop", "not understood: --drop", "export "},
        {"diff OLD NEW --language x", "--language: \"x\" is no number from 0 to 65535", "diff "},
        {"diff OLD NEW --format xml", "--format: \"xml\" is none of table|json|csv|markdown",
         "diff "},
        {"--format json html FILE", "--format: zav html writes nothing but HTML", "html "},
        {"help chekc", "there is no command chekc; did you mean check?", ""},
    };
    const ZavCommand zav;
    for (const Case& row : cases) {
        const CommandResult result = zav.run(row.arguments);
        EXPECT_EQ(result.output, "") << row.arguments;
        EXPECT_EQ(result.errors,
                  "zav: " + row.message + "\nzav: see zav " + row.command + "--help\n");
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
    EXPECT_EQ(result.output, R"(Shows, makes, checks and installs a database of fault definitions.
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
  info                        Say what a file is
  install                     Put a checked copy of a file in the place of another
  search                      Find the fault types that have some words
  html                        Write a file as a manual, one page for a browser
  export                      Write a file as text that lives in version control
  build                       Make a file of such text
  diff                        Show what a new file changes
  translate                   Write the texts of a language for a translator, as XLIFF
  merge                       Make a copy of a file with what the translator wrote
  help                        Print the help of a command

Examples:
  zav faults faults.db                              all fault types
  zav fault faults.db 17                            one, with its texts
  zav texts faults.db --language 2 --format csv     the texts in one language, for a spreadsheet
  zav sql faults.db insert | sqlite3 -bail copy.db  into a file that has the empty tables
  zav check faults.db                               what would surprise an application
  zav info faults.db --source 1                     which file it is, what is translated
  zav install faults.db /data/faults.db             safely into the place of the old file
  zav search faults.db door open                    the fault types that have these words
  zav html faults.db >manual.html                   a manual for a laptop or phone
  zav export faults.db sources                      as text for version control
  zav build sources faults.db --release 5           a file of such text
  zav diff released.db faults.db                    what the new file changes
  zav translate faults.db --from 1 --to 3 >fr.xlf   what a translator fills in
  zav merge faults.db fr.xlf new.db                 a copy with the translations

zav help COMMAND tells what a command takes.

Exit status: 0 done, 1 not found or findings, 2 wrong usage, 3 the file cannot
be read or the output cannot be written.
)");
    EXPECT_EQ(result.errors, "");
    EXPECT_EQ(result.status, 0);
}

TEST(CommandLine, StartsAnotherProgramForTheAuthor)
{
    const ZavCommand zav;
    if (!emulator().empty()) {
        GTEST_SKIP() << "an emulated program starts none";
    }
    const std::string help = R"(Make a file of such text
Usage: zav build [OPTIONS] FOLDER FILE

Positionals:
  FOLDER REQUIRED             The sources, as zav export writes them
  FILE REQUIRED               The database file to be made

Options:
  -h,--help                   Print this help message and exit
  --format table|json         How results are written; table unless given
  --release N                 The release number; none unless given
  --force                     Replace a file that is there already

Example:
  zav build sources faults.db --release 7

Exit status: 0 done, 1 mistakes in the sources, or findings in the file, 2 wrong
usage, 3 the file cannot be read or the output cannot be written.
)";
    EXPECT_EQ(zav.run("build --help").output, help);
    EXPECT_EQ(zav.run("help build").output, help);
    const CommandResult result = zav.shell(
        "mkdir -p " + zav.file("bin") + "; program='" + ZavCommand::program() +
        "'; cp \"$program\" " + zav.file("bin") +
        R"(; LD_LIBRARY_PATH="$(dirname "$program")/.." )" + zav.file("bin/zav") + " build a b");
    EXPECT_EQ(
        result.errors,
        "zav: this is a command of zav-author, which is not installed; install that package\n");
    EXPECT_EQ(result.status, 3);
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
  --debug LEVEL               The library's lines on standard error: 0 errors only, 1 and 2 more
  --format table|json|csv     How results are written; table unless given
  --stored                    The values as the file holds them, not as the library delivers them
  --columns NAME,NAME,...     The columns that are wanted, in their order
  --code CODE ...             Only those of this fault type; may be repeated
  --language LANGUAGE ...     Only those in this language; may be repeated

Example:
  zav texts faults.db --language 2 --format csv

Exit status: 0 done, 1 no text has the code and language, 2 wrong usage, 3 the
file cannot be read or the output cannot be written.
)");
    for (const std::string command :
         {"faults", "fault", "texts", "sql", "check", "info", "install"}) {
        const CommandResult result = zav.run(command + " --help");
        EXPECT_NE(result.output.find("Usage: zav " + command), std::string::npos) << result.output;
        EXPECT_NE(result.output.find("\nExample:\n  zav " + command), std::string::npos)
            << result.output;
        EXPECT_NE(result.output.find("\nExit status: 0 "), std::string::npos) << result.output;
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(zav.run("help " + command).output, result.output);
    }
    EXPECT_EQ(zav.run("help").output, zav.run("--help").output);
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
