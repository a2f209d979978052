#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "commands/ExitStatus.h"
#include "output/Output.h"

struct MergeRequest {
    std::string file;
    std::string translations;
    std::string target;
    std::optional<std::int32_t> release;  ///< nothing: that of the file
    bool dropsOwn = false;  ///< whether what is the team's own is left out rather than refused
    bool isForced = false;  ///< whether it may take the place of another file
};

/// zav merge: makes a copy of a file that has what a translator wrote.
ExitStatus runMerge(const MergeRequest& request, Output& output);
