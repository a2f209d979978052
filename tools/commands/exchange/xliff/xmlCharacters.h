#pragma once

#include <string_view>

/// @return whether XML 1.0 can hold the character, be it as a reference.
bool isXmlCharacter(char32_t codePoint);

/// @return the length of what XML can hold at the beginning of a text.
std::size_t xmlLength(std::string_view text);
