#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// @return the beginning of a text, enough to recognise it, on one line that is safe to show; no
///         longer than so many bytes and three dots.
std::string shortened(std::string_view text, std::size_t bytes = 60);
