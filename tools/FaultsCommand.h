#pragma once

#include "Database.h"
#include "ExitStatus.h"
#include "Output.h"

/// zav faults: every fault type.
ExitStatus runFaults(Database& database, Output& output);
