#pragma once

#include <cstdint>

#include "commands/ExitStatus.h"
#include "database/Database.h"
#include "output/Output.h"

/// zav fault: one fault type with its texts.
ExitStatus runFault(Database& database, std::uint16_t code, Output& output);
