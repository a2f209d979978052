#pragma once

#include <cstdint>
#include <set>
#include <string>
#include <vector>

#include "commands/ExitStatus.h"
#include "database/Database.h"
#include "output/Output.h"

struct SearchRequest {
    std::vector<std::string> words;
    std::set<std::uint16_t> languages;  ///< empty: all
    std::set<std::string> fields;       ///< empty: all
};

/// @return the names of the columns that are searched.
std::vector<std::string> searchedFields();

/// zav search: the fault types that have all words.
ExitStatus runSearch(const Database& database, const SearchRequest& request, Output& output);
