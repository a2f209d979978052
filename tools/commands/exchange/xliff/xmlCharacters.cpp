#include "xmlCharacters.h"

#include "text/Utf8.h"

bool isXmlCharacter(char32_t codePoint)
{
    constexpr char32_t FIRST_PLAIN = 0x20;
    constexpr char32_t LAST = 0x10FFFF;
    const bool isSurrogate = codePoint >= 0xD800 && codePoint <= 0xDFFF;
    const bool isNone = codePoint == 0xFFFE || codePoint == 0xFFFF || codePoint > LAST;
    const bool isLayout = codePoint == U'\t' || codePoint == U'\n' || codePoint == U'\r';
    return isLayout || (codePoint >= FIRST_PLAIN && !isSurrogate && !isNone);
}

std::size_t xmlLength(std::string_view text)
{
    std::size_t length = 0;
    while (length < text.size()) {
        length += utf8::plainLength(text.substr(length));
        if (length == text.size()) {
            break;
        }
        const utf8::Character character = utf8::first(text.substr(length));
        if (!character.valid || !isXmlCharacter(character.codePoint)) {
            break;
        }
        length += character.length;
    }
    return length;
}
