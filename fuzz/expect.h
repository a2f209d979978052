#pragma once

#include <cstdlib>
#include <iostream>

/// Ends the program, and so keeps the input, when what must hold for every input does not.
inline void expect(bool holds, const char* what)
{
    if (!holds) {
        std::cerr << "does not hold: " << what << std::endl;
        std::abort();
    }
}
