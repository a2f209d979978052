#pragma once

#include <string>

#include "check/FindingKind.h"
#include "commands/ExitStatus.h"
#include "output/Output.h"

struct InstallRequest {
    std::string source;
    std::string target;
    Severity failOn = Severity::ERROR;  ///< from which on a finding refuses the file
    std::string expectedContent;        ///< its hash; empty: any
    bool allowsDowngrade = false;
};

/// zav install: puts a checked copy of a database in the place of another.
ExitStatus runInstall(const InstallRequest& request, Output& output);
