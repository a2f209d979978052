#pragma once

#include "ListingOptions.h"
#include "commands/ExitStatus.h"
#include "database/Database.h"
#include "output/Output.h"

/// zav faults: every fault type.
ExitStatus runFaults(Database& database, const ListingOptions& options, Output& output);
