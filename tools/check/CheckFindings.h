#pragma once

#include "Finding.h"
#include "database/Database.h"

/// Compares a database file with what the library will deliver of it.
///
/// @return the findings, those of the file as a whole first, then in the order of the tables and
/// their rows.
/// @throws UnreadableFile
Findings findSurprises(const Database& opened);
