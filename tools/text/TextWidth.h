#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// The room that texts take on a terminal.

/// Makes a text safe to show: line ends stay, any other control character becomes an escape such
/// as \x1b or \u202e, and a byte that is no UTF-8 the replacement character.
std::string printable(std::string_view text);

/// printable() on one line: line ends are escaped too.
std::string printableLine(std::string_view text);

/// Lets displayWidth() know the width of every character; to be called once, before it.
void initTextWidth();

/// @param text  printable, without line ends.
/// @return the number of a terminal's columns that it takes: accents that are characters of their
///         own take none, the characters of East Asian scripts two.
std::size_t displayWidth(std::string_view text);

/// Breaks a text into lines at its line ends and, where a line is too wide, between words; inside a
/// word only if it is wider than a line.
///
/// @param text   printable.
/// @param width  of a line, at least 2.
/// @return the lines, at least one, none wider than `width`.
std::vector<std::string> wrap(std::string_view text, std::size_t width);

/// @return the width of the widest word, which no wrapping makes narrower.
std::size_t widestWord(std::string_view text);

/// @return the width of the widest line.
std::size_t widestLine(std::string_view text);
