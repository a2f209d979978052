#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// Strict decoding of UTF-8: texts of a database may hold any bytes.
namespace utf8 {

struct Character {
    char32_t codePoint;
    std::size_t length;  ///< in bytes, at least 1
    bool valid;          ///< false: one byte that belongs to no well-formed character
};

/// @param text  not empty.
/// @return the first character of the text.
Character first(std::string_view text);

/// @param text  not empty.
/// @return the last character of the text.
Character last(std::string_view text);

/// @return the bytes of a character.
std::string encoded(char32_t codePoint);

/// @return whether all of the text is well-formed.
bool isValid(std::string_view text);

/// @return whether it is a control character by its code: neither letter nor sign, and no layout
/// but
///         for line ends and the tabulator.
bool isControlCode(char32_t codePoint);

/// @return whether it is white space of any script, line ends included.
bool isSpace(char32_t codePoint);

/// @return whether a terminal, or its reader, would take the character for more than a letter:
///         control characters, line end and tabulator included, and the ones that turn the reading
///         direction around.
bool isControl(char32_t codePoint);

/// @return whether the character is not seen where it stands, but makes another text of what looks
///         the same: of no width, the soft hyphen, the byte order mark, the tag characters.
bool isInvisible(char32_t codePoint);

/// @return whether the character is better not shown as it is.
inline bool isHazard(char32_t codePoint)
{
    return isControl(codePoint) || isInvisible(codePoint);
}

/// @return the number of bytes at the beginning of a text that are letters, digits and signs of
///         ASCII, or the blank.
std::size_t plainLength(std::string_view text);

/// @return the number of bytes at the beginning of a text that are well-formed and no hazard, as
/// far
///         as that is seen at a glance: plain ones, and the letters of European scripts.
std::size_t harmlessLength(std::string_view text);

}  // namespace utf8
