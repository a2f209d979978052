#pragma once

#include <map>
#include <string>

#include "database/stored/StoredFile.h"

/// @param content  without mistakes.
/// @return the content of each file of a folder of sources, by its name: the same bytes for the
/// same
///         content.
std::map<std::string, std::string> sourcesOf(const StoredFile& content);
