#pragma once

#include <cstddef>
#include <string>
#include "formatted.h"

/// @return such as "1 row" and "2 rows".
inline std::string counted(std::size_t count, const std::string& noun)
{
    return formatted("{} {}{}", count, noun, count == 1 ? "" : "s");
}
