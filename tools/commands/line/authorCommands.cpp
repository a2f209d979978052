#include "authorCommands.h"
#include "text/formatted.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <stdexcept>

namespace {

namespace fs = std::filesystem;

/// @return the first word that is neither an option nor its value, but for "help"; empty if there
///         is none.
std::string commandOf(const std::vector<std::string>& words)
{
    for (std::size_t i = 1; i < words.size(); ++i) {
        const std::string& word = words[i];
        if (word == "--format" || word == "--debug") {
            ++i;
        } else if (word.rfind('-', 0) != 0 && word != "help") {
            return word;
        }
    }
    return "";
}

}  // namespace

const std::vector<AuthorCommand>& authorCommands()
{
    static const std::vector<AuthorCommand> commands = {
        {"search", "Find the fault types that have some words"},
        {"html", "Write a file as a manual, one page for a browser"},
        {"export", "Write a file as text that lives in version control"},
        {"build", "Make a file of such text"},
        {"diff", "Show what a new file changes"},
        {"translate", "Write the texts of a language for a translator, as XLIFF"},
        {"merge", "Make a copy of a file with what the translator wrote"},
    };
    return commands;
}

std::string descriptionOf(const std::string& name)
{
    return std::find_if(authorCommands().begin(), authorCommands().end(),
                        [&](const AuthorCommand& command) { return command.name == name; })
        ->description;
}

bool isForAuthors(int argc, char** argv)
{
    const std::string given = commandOf({argv, argv + argc});
    return std::any_of(authorCommands().begin(), authorCommands().end(),
                       [&](const AuthorCommand& command) { return command.name == given; });
}

std::function<ExitStatus(Output&)> authorProgram(char** argv)
{
    return [argv](Output& /*output*/) -> ExitStatus {
        const fs::path folder = fs::read_symlink("/proc/self/exe").parent_path();
        const std::string program = folder / ZAV_AUTHOR_PROGRAM;
        execv(program.c_str(), argv);
        throw std::runtime_error(
            errno == ENOENT
                ? "this is a command of zav-author, which is not installed; install that package"
                : formatted("{}: cannot be started: {}", program, std::strerror(errno)));
    };
}
