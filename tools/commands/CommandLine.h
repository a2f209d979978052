#pragma once

#include <functional>
#include <stdexcept>

#include "ExitStatus.h"
#include "output/Output.h"

/// What the user asks for.
struct Request {
    Format format = Format::TABLE;
    std::function<ExitStatus(Output&)> run;
};

/// The arguments make no sense; the text says which.
class UsageError : public std::runtime_error {
public:
    UsageError(const std::string& text, const std::string& help)
        : std::runtime_error(text), m_help(help)
    {
    }

    /// @return the command that shows what would make sense.
    const std::string& help() const { return m_help; }

private:
    std::string m_help;
};

/// @return a command, or the printing of the help or the version.
/// @throws UsageError
Request parseCommandLine(int argc, char** argv);
