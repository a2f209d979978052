#include "lowerCase.h"

#include <wctype.h>

#include "Utf8.h"

std::string lowerCase(std::string_view text)
{
    std::string lower;
    while (!text.empty()) {
        const utf8::Character character = utf8::first(text);
        const auto codePoint =
            static_cast<char32_t>(towlower(static_cast<wint_t>(character.codePoint)));
        lower += character.valid && codePoint != character.codePoint
                     ? utf8::encoded(codePoint)
                     : std::string(text.substr(0, character.length));
        text.remove_prefix(character.length);
    }
    return lower;
}
