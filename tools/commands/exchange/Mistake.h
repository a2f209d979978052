#pragma once

#include <cstddef>
#include <string>
#include <vector>

/// Something in what an author or a translator wrote that keeps a database from being made of it.
struct Mistake {
    std::string file;
    std::size_t line = 0;  ///< where the record begins; 0: of the file as a whole
    std::string column;    ///< or the unit of a translation; empty: of the record as a whole
    std::string what;
};

using Mistakes = std::vector<Mistake>;

/// Says all mistakes on standard error.
///
/// @param name  of what was read.
/// @throws UnfitFile unless there are none
void refuseMistakes(const Mistakes& mistakes, const std::string& name);
