#pragma once

#include <string>
#include <vector>

#include "database/Database.h"

/// @return what the file has beside that of db/schema.sql, such as "the index i"; and what it has
///         otherwise: a view in the place of a table.
/// @throws UnreadableFile
std::vector<std::string> ownParts(const Database& database);
