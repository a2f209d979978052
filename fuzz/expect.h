#pragma once

#include <cstdio>
#include <cstdlib>

/// Ends the program, and so keeps the input, when what must hold for every input does not.
inline void expect(bool holds, const char* what)
{
    if (!holds) {
        std::fprintf(stderr, "does not hold: %s\n", what);
        std::abort();
    }
}
