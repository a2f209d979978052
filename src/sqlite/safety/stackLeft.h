#pragma once

#include <cstddef>

/// @return bytes of stack that the calling thread has left; where that is not known (on a stack of
///         the application's own, for instance), as many as the smallest usual one has.
std::size_t stackLeft();

/// @return whether there is as much as a usual thread has; without asking the system for much.
bool hasUsualStack();
