#pragma once

#include <string>

#include "Mistake.h"
#include "database/stored/StoredFile.h"

/// Reads a folder of sources.
///
/// @param mistakes  gets all that are found; the rows are of use only if there are none.
/// @throws UnreadableFile
StoredFile readSources(const std::string& folder, Mistakes& mistakes);
