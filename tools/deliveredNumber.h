#pragma once

#include <cstdint>
#include <optional>
#include <string>

/// @param text  of a cell; of an SQL NULL, empty.
/// @param bits  width of the field, 16 or 32.
/// @return the number that the library reads; nothing if it finds none and delivers 0.
std::optional<std::uint64_t> deliveredNumber(const std::string& text, unsigned bits);

/// @return the largest number that a field of this width holds.
std::uint64_t largestNumber(unsigned bits);
