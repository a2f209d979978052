#pragma once

#include <cstddef>
#include <string>
#include <vector>

/// Something in a folder of sources that keeps a database from being made of it.
struct Mistake {
    std::string file;
    std::size_t line = 0;  ///< where the record begins; 0: of the file as a whole
    std::string column;    ///< empty: of the record as a whole
    std::string what;
};

using Mistakes = std::vector<Mistake>;
