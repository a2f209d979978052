#pragma once

#include <string>
#include <vector>

struct ProgramResult {
    int exitStatus;      ///< -1 if it was ended by a signal
    std::string output;  ///< all that it wrote to standard output
};

/// @return the words to put before the path of a program of the build, such as an emulator's path
/// and
///         arguments; empty where none are needed.
std::vector<std::string> emulator();

/// Runs a program of the test tree to its end; under an emulator where the tests themselves need
/// one. Throws std::system_error if it cannot be started.
/// @param command  the program's path and its arguments.
ProgramResult runProgram(std::vector<std::string> command);
