#pragma once

#include <cstdint>
#include <set>
#include <string>
#include <vector>

#include "ListingOptions.h"
#include "commands/ExitStatus.h"
#include "database/Database.h"
#include "output/Output.h"

struct FaultRequest {
    std::uint16_t code = 0;
    std::string alias;                  ///< if it is not empty, looked for instead of the code
    std::set<std::uint16_t> languages;  ///< of the texts; empty: all
    ListingOptions listing;
};

/// @return the names of all columns that a fault type and its texts can be shown with.
std::vector<std::string> faultColumns();

/// zav fault: one fault type with its texts.
ExitStatus runFault(Database& database, const FaultRequest& request, Output& output);
