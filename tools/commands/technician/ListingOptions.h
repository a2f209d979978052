#pragma once

#include <string>
#include <vector>

/// How a list of records is wanted.
struct ListingOptions {
    bool isStored = false;             ///< as the file holds them, not as the library delivers them
    std::vector<std::string> columns;  ///< in the order that is wanted; empty: all
};
