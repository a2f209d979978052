#include "SqlText.h"

#include <string_view>

#include "Utf8.h"
#include "formatted.h"

namespace {

/// Line ends and tabulators are safe; a carriage return is not: sqlite3 drops it at a line's end.
bool isSafe(std::string_view text)
{
    while (!text.empty()) {
        const utf8::Character character = utf8::first(text);
        const bool isLayout = character.codePoint == U'\n' || character.codePoint == U'\t';
        if (!character.valid || (utf8::isControl(character.codePoint) && !isLayout)) {
            return false;
        }
        text.remove_prefix(character.length);
    }
    return true;
}

}  // namespace

std::string hexadecimal(const std::string& text)
{
    std::string digits;
    for (const char byte : text) {
        digits += formatted("{:02x}", static_cast<unsigned char>(byte));
    }
    return digits;
}

std::string doubledQuotes(const std::string& text)
{
    std::string doubled;
    for (const char character : text) {
        doubled.append(character == '\'' ? 2 : 1, character);
    }
    return doubled;
}

std::string sqlText(const std::string& text)
{
    return isSafe(text) ? doubledQuotes(text) : "'||CAST(x'" + hexadecimal(text) + "' AS TEXT)||'";
}
