#pragma once

#include <cstdint>
#include <set>
#include <string>
#include <vector>

#include "ListingOptions.h"
#include "commands/ExitStatus.h"
#include "database/Database.h"
#include "output/Output.h"

/// Which texts are wanted, and how; all of them unless narrowed.
struct TextsRequest {
    std::set<std::uint32_t> codes;
    std::set<std::uint16_t> languages;
    ListingOptions listing;

    bool isNarrowed() const { return !codes.empty() || !languages.empty(); }
};

/// @return the names of all columns that texts can be shown with.
std::vector<std::string> textsColumns();

/// zav texts: the texts of fault types.
ExitStatus runTexts(Database& database, const TextsRequest& request, Output& output);
