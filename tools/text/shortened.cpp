#include "shortened.h"

#include "TextWidth.h"
#include "Utf8.h"

std::string shortened(std::string_view text, std::size_t bytes)
{
    std::string shown;
    while (!text.empty()) {
        const utf8::Character character = utf8::first(text);
        const std::string next = printableLine(text.substr(0, character.length));
        if (shown.size() + next.size() > bytes) {
            return shown + "...";
        }
        shown += next;
        text.remove_prefix(character.length);
    }
    return shown;
}
