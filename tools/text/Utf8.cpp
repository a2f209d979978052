#include "Utf8.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <iterator>

namespace utf8 {
namespace {

constexpr Character INVALID = {U'\uFFFD', 1, false};

unsigned byteAt(std::string_view text, std::size_t position)
{
    return static_cast<unsigned char>(text[position]);
}

std::size_t lengthByFirstByte(unsigned byte)
{
    if (byte < 0x80) {
        return 1;
    }
    if (byte >= 0xC2 && byte < 0xE0) {
        return 2;
    }
    if (byte >= 0xE0 && byte < 0xF0) {
        return 3;
    }
    return byte >= 0xF0 && byte < 0xF5 ? 4 : 0;
}

/// A character written longer than needed, half of a UTF-16 pair, or past the last code point.
bool isForbidden(char32_t codePoint, std::size_t length)
{
    constexpr char32_t SMALLEST[] = {0, 0, 0x80, 0x800, 0x10000};
    return codePoint < SMALLEST[length] || (codePoint >= 0xD800 && codePoint < 0xE000) ||
           codePoint > 0x10FFFF;
}

/// @return whether eight bytes are from 0x20 to 0x7E: in none is the highest bit set, nor is it
///         after the smallest is taken from them or what is missing to it is added.
bool areEightPlain(const char* bytes)
{
    constexpr std::uint64_t EACH = 0x0101010101010101;
    std::uint64_t eight = 0;
    std::memcpy(&eight, bytes, sizeof(eight));
    return ((eight | (eight - EACH * 0x20) | (eight + EACH)) & (EACH * 0x80)) == 0;
}

}  // namespace

Character first(std::string_view text)
{
    const std::size_t length = lengthByFirstByte(byteAt(text, 0));
    if (length == 0 || length > text.size()) {
        return INVALID;
    }
    char32_t codePoint = length == 1 ? byteAt(text, 0) : byteAt(text, 0) & (0x7FU >> length);
    for (std::size_t i = 1; i < length; ++i) {
        if ((byteAt(text, i) & 0xC0U) != 0x80) {
            return INVALID;
        }
        codePoint = codePoint << 6U | (byteAt(text, i) & 0x3FU);
    }
    return isForbidden(codePoint, length) ? INVALID : Character{codePoint, length, true};
}

Character last(std::string_view text)
{
    constexpr std::size_t LONGEST = 4;
    for (std::size_t length = std::min(LONGEST, text.size()); length > 1; --length) {
        const Character character = first(text.substr(text.size() - length));
        if (character.valid && character.length == length) {
            return character;
        }
    }
    return first(text.substr(text.size() - 1));
}

std::string encoded(char32_t codePoint)
{
    constexpr unsigned BITS = 6;  // of a byte that is not the first
    const auto byte = [](char32_t bits) {
        return static_cast<char>(static_cast<unsigned char>(bits));
    };
    const auto further = [&](unsigned number) {
        return byte(0x80U | ((codePoint >> (BITS * number)) & 0x3FU));
    };
    if (codePoint < 0x80) {
        return {byte(codePoint)};
    }
    if (codePoint < 0x800) {
        return {byte(0xC0U | codePoint >> BITS), further(0)};
    }
    if (codePoint < 0x10000) {
        return {byte(0xE0U | codePoint >> (2 * BITS)), further(1), further(0)};
    }
    return {byte(0xF0U | codePoint >> (3 * BITS)), further(2), further(1), further(0)};
}

bool isValid(std::string_view text)
{
    for (;;) {
        text.remove_prefix(harmlessLength(text));
        if (text.empty()) {
            return true;
        }
        const Character character = first(text);
        if (!character.valid) {
            return false;
        }
        text.remove_prefix(character.length);
    }
}

bool isControlCode(char32_t codePoint)
{
    return codePoint < 0x20 || (codePoint >= 0x7F && codePoint < 0xA0);
}

bool isSpace(char32_t codePoint)
{
    return codePoint == U' ' || (codePoint >= 0x09 && codePoint <= 0x0D) || codePoint == 0x85 ||
           codePoint == 0xA0 || codePoint == 0x1680 ||
           (codePoint >= 0x2000 && codePoint <= 0x200A) || codePoint == 0x2028 ||
           codePoint == 0x2029 || codePoint == 0x202F || codePoint == 0x205F || codePoint == 0x3000;
}

bool isControl(char32_t codePoint)
{
    const bool isSeparator = codePoint == 0x2028 || codePoint == 0x2029;
    const bool turnsDirection = codePoint == 0x200E || codePoint == 0x200F || codePoint == 0x61C ||
                                (codePoint >= 0x202A && codePoint <= 0x202E) ||
                                (codePoint >= 0x2066 && codePoint <= 0x2069);
    return isControlCode(codePoint) || isSeparator || turnsDirection;
}

bool isInvisible(char32_t codePoint)
{
    struct Range {
        char32_t first;
        char32_t last;
    };
    constexpr Range RANGES[] = {
        {0xAD, 0xAD},       {0x34F, 0x34F},     {0x115F, 0x1160},   {0x17B4, 0x17B5},
        {0x180B, 0x180F},   {0x200B, 0x200D},   {0x2060, 0x2065},   {0x206A, 0x206F},
        {0x3164, 0x3164},   {0xFEFF, 0xFEFF},   {0xFFA0, 0xFFA0},   {0xFFF9, 0xFFFB},
        {0x1BCA0, 0x1BCA3}, {0x1D173, 0x1D17A}, {0xE0000, 0xE01EF},
    };
    return codePoint >= RANGES[0].first &&
           std::any_of(std::begin(RANGES), std::end(RANGES), [codePoint](const Range& range) {
               return codePoint >= range.first && codePoint <= range.last;
           });
}

std::size_t plainLength(std::string_view text)
{
    std::size_t length = 0;
    while (length + sizeof(std::uint64_t) <= text.size() && areEightPlain(text.data() + length)) {
        length += sizeof(std::uint64_t);
    }
    while (length < text.size() && byteAt(text, length) >= 0x20 && byteAt(text, length) < 0x7F) {
        ++length;
    }
    return length;
}

std::size_t harmlessLength(std::string_view text)
{
    constexpr unsigned FIRST_LEAD = 0xC3;  // of U+00C0
    constexpr unsigned LAST_LEAD = 0xCC;   // of U+033F
    std::size_t length = plainLength(text);
    while (length + 1 < text.size() && byteAt(text, length) >= FIRST_LEAD &&
           byteAt(text, length) <= LAST_LEAD && (byteAt(text, length + 1) & 0xC0U) == 0x80) {
        length += 2;
        length += plainLength(text.substr(length));
    }
    return length;
}

}  // namespace utf8
