#pragma once

#include "ExitStatus.h"
#include "database/Database.h"
#include "output/Output.h"

/// zav check: what would surprise an application.
ExitStatus runCheck(const Database& database, Output& output);
