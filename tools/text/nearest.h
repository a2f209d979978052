#pragma once

#include <string>
#include <vector>

/// @param candidates  at least one.
/// @return the one that takes the fewest edits to make of a word; of several the first.
const std::string& nearest(const std::string& word, const std::vector<std::string>& candidates);
