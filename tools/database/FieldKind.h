#pragma once

#include <cstdint>

/// What a column is in the library's record.
enum class FieldKind : std::uint8_t {
    TEXT,
    NUMBER_16,  ///< of 16 bits, without sign
    NUMBER_32,
};

/// @param kind  of a number.
/// @return the largest number that the field holds.
constexpr std::uint64_t largestNumber(FieldKind kind)
{
    return kind == FieldKind::NUMBER_16 ? UINT16_MAX : UINT32_MAX;
}
