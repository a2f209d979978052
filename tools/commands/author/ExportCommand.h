#pragma once

#include <string>

#include "commands/ExitStatus.h"
#include "database/Database.h"
#include "output/Output.h"

struct ExportRequest {
    std::string folder;
    bool dropsOwn = false;  ///< whether what is the team's own is left out rather than refused
};

/// zav export: writes a file as a folder of sources, of which zav build makes it again.
ExitStatus runExport(const Database& database, const ExportRequest& request, Output& output);
