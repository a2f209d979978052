#pragma once

#include <functional>
#include <string>

/// Runs SQLite's integrity check whole, on a connection of its own.
///
/// @param report  called with each thing that SQLite finds, in its words.
void integrityCheck(const std::string& file, const std::function<void(const std::string&)>& report);
