#pragma once

#include <string>
#include <vector>

/// @return such as "; the nearest is DOOR_OPEN", in any letter case; empty if no alias is of a
/// usual
///         length.
std::string nearestAlias(const std::string& word, const std::vector<std::string>& aliases);
