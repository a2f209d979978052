#pragma once

#include <cstdint>
#include <functional>
#include <string>

/// Runs SQLite's integrity check whole, on a connection of its own.
///
/// @param fileSize  by which the memory is limited, that of the whole process from here on.
/// @param report    called with each thing that SQLite finds, in its words.
void integrityCheck(const std::string& file, std::uintmax_t fileSize,
                    const std::function<void(const std::string&)>& report);
