#pragma once

#include <cstdint>
#include <functional>
#include <set>

struct CheckOptions {
    /// That every fault type should have texts in; empty: those that have a text.
    std::set<std::uint16_t> languages;

    /// Called every now and then while a check runs.
    std::function<void()> onProgress = [] {};
};
