#pragma once

#include <string>
#include <vector>

#include "database/stored/StoredFile.h"

/// @return why a file's rows cannot be written elsewhere and come back, a line each.
std::vector<std::string> rowObstacles(const StoredFile& content);

/// @return the same, and what the file has of its own beside them.
std::vector<std::string> fileObstacles(const Database& database, const StoredFile& content,
                                       bool dropsOwn);

/// Says on standard error what keeps a file from being written elsewhere, a line each.
///
/// @throws UnfitFile unless there is nothing
void refuseObstacles(const std::string& file, const std::vector<std::string>& obstacles);
