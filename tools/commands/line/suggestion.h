#pragma once

#include <string>
#include <vector>

/// @return "; did you mean X?" with the candidate that a word was meant to be; empty if it is far
///         from all.
std::string suggestion(const std::string& word, const std::vector<std::string>& candidates);
