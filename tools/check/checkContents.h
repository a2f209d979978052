#pragma once

#include "CheckOptions.h"
#include "Finding.h"
#include "database/RawDatabase.h"

/// Compares what the two tables of a file hold with what the library will deliver of them.
///
/// @param sink  gets the findings in the order of the tables and their rows, but for what only
/// shows
///              once all rows are known.
/// @throws FailedQuery where it is not the reading of a table that fails, which is a finding.
void checkContents(const RawDatabase& database, const CheckOptions& options,
                   const FindingSink& sink);
