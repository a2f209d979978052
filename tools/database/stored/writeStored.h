#pragma once

#include <cstdint>

#include "StoredFile.h"

/// Makes a database of an empty file: the same bytes of the same rows, by the same SQLite. The
/// texts get the ids 1 to n in their order.
///
/// @param release  0: none.
/// @throws RefusedReplacement
void writeStored(const std::string& path, const StoredFile& content, std::int32_t release);
