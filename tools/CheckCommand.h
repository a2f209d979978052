#pragma once

#include "Database.h"
#include "ExitStatus.h"
#include "Output.h"

/// zav check: what would surprise an application.
ExitStatus runCheck(Database& database, Output& output);
