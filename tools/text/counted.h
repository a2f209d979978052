#pragma once

#include <fmt/format.h>

#include <cstddef>
#include <string>

/// @return such as "1 row" and "2 rows".
inline std::string counted(std::size_t count, const std::string& noun)
{
    return fmt::format("{} {}{}", count, noun, count == 1 ? "" : "s");
}
