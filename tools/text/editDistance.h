#pragma once

#include <cstddef>
#include <string_view>

/// @return how many edits make one text the other: a character added, removed or exchanged, or two
///         neighbours swapped; a number above `most` says no more than that it takes more.
std::size_t editDistance(std::string_view one, std::string_view other, std::size_t most);
