#include "tools/ZavCommand.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "support/database.h"
#include "support/runProgram.h"

namespace {

constexpr const char* AUTHOR_COMMANDS = "search|html|export|build|diff|translate|merge";

std::string withoutCarriageReturns(const std::string& text)
{
    std::string plain;
    for (const char character : text) {
        plain += character == '\r' ? "" : std::string(1, character);
    }
    return plain;
}

std::string quoted(const std::string& word)
{
    std::string text = "'";
    for (const char character : word) {
        text += character == '\'' ? "'\\''" : std::string(1, character);
    }
    return text + "'";
}

/// The program of a build, and what runs it, as words of a shell.
std::string words(const std::string& program)
{
    std::string line;
    for (const std::string& word : emulator()) {
        line += quoted(word) + ' ';
    }
    return line + quoted(program);
}

}  // namespace

// A program of one word, wherever the tree stands and whatever runs it. An emulated program cannot
// start another one, and so the commands of the other are given to it here.
ZavCommand::ZavCommand() : m_program(m_programDir.file("zav"))
{
    std::ofstream script(m_program);
    script << "#!/bin/sh\n";
    if (!emulator().empty()) {
        // An option with its value may come before the command.
        script << "case \"$1\" in --*) command=$3 ;; *) command=$1 ;; esac\n"
               << "case \"$command\" in " << AUTHOR_COMMANDS << ") exec "
               << words(ZAV_AUTHOR_COMMAND) << " \"$@\" ;; esac\n";
    }
    script << "exec " << words(ZAV_COMMAND) << " \"$@\"\n";
    script.close();
    std::filesystem::permissions(m_program, std::filesystem::perms::owner_all);
}

CommandResult ZavCommand::run(const std::string& arguments, const std::string& environment) const
{
    return shell("env " + environment + " $ZAV " + arguments);
}

bool ZavCommand::canOpenTerminal()
{
    const int terminal = posix_openpt(O_RDWR | O_NOCTTY);
    const char* const name = unlockpt(terminal) == 0 ? ptsname(terminal) : nullptr;
    const bool canOpen = name != nullptr && access(name, R_OK | W_OK) == 0;
    close(terminal);
    return canOpen;
}

CommandResult ZavCommand::runOnTerminal(int columns, const std::string& arguments,
                                        const std::string& environment) const
{
    const std::string line =
        "stty cols " + std::to_string(columns) + " && env " + environment + " $ZAV " + arguments;
    CommandResult result =
        shell("script --quiet --return --command " + quoted(line) + " /dev/null </dev/null");
    result.output = withoutCarriageReturns(result.output);
    return result;
}

CommandResult ZavCommand::shell(const std::string& line) const
{
    const std::string output = file("standard-output");
    const std::string errors = file("standard-error");
    const std::string script =
        "unset COLUMNS NO_COLOR; export TERM=xterm LC_ALL=C SHELL=/bin/sh;"
        "export ZAV=" +
        m_program + "; zav() { $ZAV \"$@\"; };";
    const std::string command = script + "{ " + line + "\n} >" + output + " 2>" + errors;
    // NOLINTNEXTLINE(cert-env33-c): a shell is what is wanted, for pipes and terminals
    const int status = std::system(command.c_str());
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, contentOf(output), contentOf(errors)};
}

std::string ZavCommand::program()
{
    return ZAV_COMMAND;
}

std::string ZavCommand::database(const std::string& sql) const
{
    return makeDatabase(file("faults.db"), sql);
}

std::string contentOf(const std::string& file)
{
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}
