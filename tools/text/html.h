#pragma once

#include <string>
#include <string_view>

/// @return the text, ready for an element or a quoted attribute of HTML; what has no place there, a
///         control character or a byte that is no UTF-8, becomes the replacement character.
std::string htmlText(std::string_view text);

/// @return the bytes in base 64.
std::string base64(std::string_view bytes);
