#pragma once

/// What the command leaves behind for the shell.
enum class ExitStatus {
    DONE = 0,
    NOT_FOUND_OR_FINDINGS = 1,
    USAGE = 2,
    UNREADABLE = 3,  ///< the file could not be read, or the output not be written
};
