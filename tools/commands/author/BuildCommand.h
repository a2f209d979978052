#pragma once

#include <cstdint>
#include <string>

#include "commands/ExitStatus.h"
#include "output/Output.h"

struct BuildRequest {
    std::string folder;
    std::string target;
    std::int32_t release = 0;  ///< 0: none
    bool isForced = false;     ///< whether it may take the place of another file
};

/// zav build: makes a database of a folder of sources.
ExitStatus runBuild(const BuildRequest& request, Output& output);
