#pragma once

#include <string>
#include <vector>

#include "database/info/FileInfo.h"

/// What a file is, in the words that people read.

struct InfoText {
    const char* name;
    std::string value;
};

/// @return all but what is told by language.
std::vector<InfoText> infoTexts(const FileInfo& info);
