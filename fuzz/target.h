#pragma once

#include <cstddef>
#include <cstdint>

/// What each target defines: tries one input. Called by libFuzzer, or by replay.cpp.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
