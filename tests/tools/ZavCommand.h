#pragma once

#include <string>
#include <vector>

#include "support/TempDir.h"

struct CommandResult {
    int status;          ///< exit status; -1 if it was ended by a signal
    std::string output;  ///< standard output
    std::string errors;  ///< standard error
};

/// Runs shell commands, the built zav command above all, in an environment that is the same
/// everywhere.
class ZavCommand {
public:
    ZavCommand();

    /// @param arguments    words for the shell, quoted where needed.
    /// @param environment  settings such as "COLUMNS=40", blank-separated.
    CommandResult run(const std::string& arguments, const std::string& environment = "") const;

    /// @return whether runOnTerminal() can be called: a container may have no pseudo-terminals.
    static bool canOpenTerminal();

    /// Runs it on a terminal of a width, which takes both outputs; line ends are made plain again.
    CommandResult runOnTerminal(int columns, const std::string& arguments,
                                const std::string& environment = "") const;

    /// Runs a line of shell, in which "zav" is the command, and so is $ZAV, for what is no shell.
    CommandResult shell(const std::string& line) const;

    /// @return the path of the built command.
    static std::string program();

    /// @return a path in a folder that goes with this object.
    std::string file(const std::string& name) const { return m_dir.file(name); }

    /// Makes a database with both tables and further SQL. @return its path.
    std::string database(const std::string& sql = "") const;

private:
    TempDir m_dir;
    TempDir m_programDir;
    std::string m_program;
};

/// @return all of a file's bytes.
std::string contentOf(const std::string& file);
