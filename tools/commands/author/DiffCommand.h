#pragma once

#include <cstdint>
#include <set>
#include <string>

#include "commands/ExitStatus.h"
#include "output/Output.h"

enum class DiffFormat { LINES, JSON, CSV, MARKDOWN };

struct DiffRequest {
    std::string before;
    std::string after;
    DiffFormat format = DiffFormat::LINES;
    std::set<std::uint32_t> codes;      ///< empty: all
    std::set<std::uint16_t> languages;  ///< empty: all, and the fault types themselves
    int debugLevel = 0;
};

/// zav diff: what a release changes.
///
/// @return whether anything differs.
ExitStatus runDiff(const DiffRequest& request, Output& output);
