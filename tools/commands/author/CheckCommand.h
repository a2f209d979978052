#pragma once

#include <cstdint>
#include <set>
#include <string>
#include <vector>

#include "check/FindingKind.h"
#include "commands/ExitStatus.h"
#include "output/Output.h"

enum class CheckFormat { LINES, JSON, CSV, SARIF };

/// What is to be checked, and what counts.
struct CheckRequest {
    std::vector<std::string> files;
    CheckFormat format = CheckFormat::LINES;
    bool isGrouped = true;                ///< in lines
    Severity failOn = Severity::WARNING;  ///< from which on the check fails
    std::set<FindingKind> ignored;
    std::set<FindingKind> only;         ///< empty: all
    std::set<std::uint16_t> languages;  ///< empty: those that have a text
};

/// zav check: what would surprise an application or its users.
///
/// @return the worst of all files.
ExitStatus runCheck(const CheckRequest& request, Output& output);
