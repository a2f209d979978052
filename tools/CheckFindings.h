#pragma once

#include <string>

#include "Finding.h"

/// Compares a database file with what the library will deliver of it.
///
/// @return the findings, in the order of the tables and their rows.
/// @throws UnreadableFile
Findings findSurprises(const std::string& file);
