#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>

#include "Output.h"

/// Writes an array of JSON one element at a time, laid out as if it were written whole.
class JsonList {
public:
    /// @param depth  of objects and arrays that stand around it.
    explicit JsonList(Output& output, std::size_t depth = 0) : m_output(output), m_depth(depth) {}

    void add(const nlohmann::ordered_json& element);

    /// Closes the array; the line end is the caller's unless it stands alone.
    void end();

private:
    Output& m_output;
    std::size_t m_depth;
    bool m_isEmpty = true;
};
