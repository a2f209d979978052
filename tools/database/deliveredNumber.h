#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "FieldKind.h"

/// @param text  of a cell; of an SQL NULL, empty.
/// @param kind  of the field, which takes a number.
/// @return the number that the library reads; nothing if it finds none and delivers 0.
std::optional<std::uint64_t> deliveredNumber(const std::string& text, FieldKind kind);
