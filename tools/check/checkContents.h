#pragma once

#include <string>

#include "CheckOptions.h"
#include "Finding.h"

/// Compares what the two tables of a file hold with what the library will deliver of them.
///
/// @param sink  gets the findings in the order of the tables and their rows, but for what only
/// shows
///              once all rows are known.
/// @throws FailedQuery if the file cannot be opened or its schema not be read.
void checkContents(const std::string& file, const CheckOptions& options, const FindingSink& sink);
