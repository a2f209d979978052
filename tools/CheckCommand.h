#pragma once

#include "Database.h"
#include "ExitStatus.h"
#include "Output.h"

/// zav check: what would surprise an application.
ExitStatus runCheck(const Database& database, Output& output);
