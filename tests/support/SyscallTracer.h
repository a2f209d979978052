#pragma once

#include <string>
#include <vector>

/// What became of a program that was run under SyscallTracer.
struct TracedRun {
    int exitStatus;                  ///< -1 if it was killed
    std::vector<std::string> calls;  ///< such as "fsync faults.db", of those that change files
};

/// @return whether programs can be traced here: not where they run in an emulator.
bool canTraceSyscalls();

/// Runs a program and stops at each of its system calls that creates, writes, cuts, syncs, renames
/// or unlinks a file, or changes its owner or mode; not at those of its children.
///
/// @param command     the program's path and its arguments.
/// @param killBefore  the number of the call, from 0, before which it is killed.
TracedRun runTraced(const std::vector<std::string>& command, std::size_t killBefore);

/// For runTraced(): the program runs to its end.
constexpr std::size_t NEVER = static_cast<std::size_t>(-1);
