#pragma once

#include <map>
#include <string>
#include <vector>

#include "database/stored/compareStored.h"

/// What a release changes.
struct ChangeList {
    std::vector<Change> changes;
    std::map<std::string, std::string> aliases;  ///< by code, of the new file if it has one

    /// @return the code as people read it, with the alias if there is one.
    std::string nameOf(const Change& change) const;
};

/// @return such as "added".
const char* nameOf(Change::Kind kind);
