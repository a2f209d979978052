#pragma once

#include <string>
#include <string_view>

/// @return the text with the small letter in the place of each capital one, in any script that the
///         system knows, once initTextWidth() has been called. No letter becomes two.
std::string lowerCase(std::string_view text);
