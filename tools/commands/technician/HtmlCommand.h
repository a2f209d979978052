#pragma once

#include <cstdint>
#include <set>
#include <string>

#include "commands/ExitStatus.h"
#include "database/Database.h"
#include "output/Output.h"

struct HtmlRequest {
    std::set<std::uint16_t> languages;  ///< empty: all
    std::string title;                  ///< empty: the name of the file
};

/// zav html: the whole file as one page.
ExitStatus runHtml(const Database& database, const HtmlRequest& request, Output& output);
