#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "commands/ExitStatus.h"
#include "output/Output.h"

struct InfoRequest {
    std::vector<std::string> files;
    std::optional<std::uint16_t> source;  ///< the language that others are compared with
};

/// zav info: what files are.
///
/// @return the worst of all files.
ExitStatus runInfo(const InfoRequest& request, Output& output);
