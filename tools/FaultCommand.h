#pragma once

#include <cstdint>

#include "Database.h"
#include "ExitStatus.h"
#include "Output.h"

/// zav fault: one fault type with its texts.
ExitStatus runFault(Database& database, std::uint16_t code, Output& output);
