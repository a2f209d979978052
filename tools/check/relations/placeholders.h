#pragma once

#include <string>
#include <string_view>

/// @return the places of a text that are filled when it is shown, sorted and blank-separated:
///         printf's conversions (%d, %-5.2f, %1$s), %1 to %99, {0} and {name}. A blank is no flag
///         of a conversion here, so that "10 % of" holds none.
std::string placeholdersIn(std::string_view text);
