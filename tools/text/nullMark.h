#pragma once

#include <string>
#include <string_view>

/// How CSV, in which everything is a text, tells NULL from the texts.

constexpr const char* NULL_MARK = "\\N";

/// @return a text as a cell: one that would be the mark, or is made of it, has a backslash more.
std::string withoutNullMark(std::string_view text);

/// @param cell  that is not the mark itself.
/// @return the text that it stands for.
std::string textOfCell(std::string_view cell);
