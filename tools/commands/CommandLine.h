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
    using std::runtime_error::runtime_error;
};

/// @return a command, or the printing of the help or the version.
/// @throws UsageError
Request parseCommandLine(int argc, char** argv);
