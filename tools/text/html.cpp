#include "html.h"

#include <algorithm>
#include <cstdint>

#include "Utf8.h"

namespace {

std::string_view entityOf(char32_t codePoint)
{
    switch (codePoint) {
    case U'&':
        return "&amp;";
    case U'<':
        return "&lt;";
    case U'>':
        return "&gt;";
    case U'"':
        return "&quot;";
    case U'\'':
        return "&#39;";
    default:
        return "";
    }
}

}  // namespace

std::string htmlText(std::string_view text)
{
    std::string escaped;
    while (!text.empty()) {
        const utf8::Character character = utf8::first(text);
        const std::string_view entity = entityOf(character.codePoint);
        const bool isLayout = character.codePoint == U'\n' || character.codePoint == U'\t';
        if (!entity.empty()) {
            escaped += entity;
        } else if (!character.valid || (utf8::isControlCode(character.codePoint) && !isLayout)) {
            escaped += "\uFFFD";
        } else {
            escaped += text.substr(0, character.length);
        }
        text.remove_prefix(character.length);
    }
    return escaped;
}

std::string base64(std::string_view bytes)
{
    constexpr std::string_view DIGITS =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    constexpr unsigned BITS = 6;
    constexpr std::size_t GROUP = 3;
    std::string digits;
    for (std::size_t start = 0; start < bytes.size(); start += GROUP) {
        std::uint32_t group = 0;
        for (std::size_t i = 0; i < GROUP; ++i) {
            const bool isThere = start + i < bytes.size();
            group = group << 8U | (isThere ? static_cast<unsigned char>(bytes[start + i]) : 0U);
        }
        const std::size_t used = std::min(bytes.size() - start, GROUP) + 1;
        for (unsigned i = 0; i <= GROUP; ++i) {
            digits += i < used ? DIGITS[group >> (BITS * (3 - i)) & 0x3FU] : '=';
        }
    }
    return digits;
}
