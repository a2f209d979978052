#pragma once

#include <functional>

/// @return whether a member of an object stands before another one in memory.
inline bool standsBefore(const void* first, const void* second)
{
    return std::less<>()(first, second);
}
