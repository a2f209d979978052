#pragma once

#include <functional>
#include <string>
#include <vector>

#include "commands/ExitStatus.h"
#include "output/Output.h"

/// The commands that need more than a device has: a program of their own, zav-author, which zav
/// starts. It may not be installed.

struct AuthorCommand {
    const char* name;
    const char* description;
};

const std::vector<AuthorCommand>& authorCommands();

/// @param name  of one of them.
std::string descriptionOf(const std::string& name);

/// @return whether such a command is called, or its help.
bool isForAuthors(int argc, char** argv);

/// @return what replaces this process by theirs, for the same arguments.
std::function<ExitStatus(Output&)> authorProgram(char** argv);
