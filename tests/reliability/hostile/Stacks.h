#pragma once

#include <cstddef>
#include <functional>

/// Runs a function on the main thread.
/// @return bytes of stack that it has used.
std::size_t runOnMainStack(const std::function<void()>& run);

/// Runs a function on a thread with a stack of a given size, below which nothing can be written.
/// @return bytes of stack that it has used, with what a thread needs by itself.
std::size_t runOnThread(std::size_t stackSize, const std::function<void()>& run);
