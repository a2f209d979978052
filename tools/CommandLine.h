#pragma once

#include <functional>
#include <stdexcept>
#include <string>

#include "Database.h"
#include "ExitStatus.h"
#include "Output.h"

/// What the user asks for.
struct Request {
    std::string file;
    int debugLevel = 0;
    Format format = Format::TABLE;
    std::function<ExitStatus(Database&, Output&)> command;
};

/// The arguments make no sense; the text says which.
class UsageError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The arguments ask for the text alone: the help, or the version.
class TextRequest : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// @throws UsageError, TextRequest
Request parseCommandLine(int argc, char** argv);
