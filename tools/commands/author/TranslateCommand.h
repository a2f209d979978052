#pragma once

#include <cstdint>
#include <map>
#include <string>

#include "commands/ExitStatus.h"
#include "database/Database.h"
#include "output/Output.h"

struct TranslateRequest {
    std::uint16_t from = 0;
    std::uint16_t to = 0;
    bool isMissingOnly = false;                  ///< whether what has a translation is left out
    std::map<std::uint16_t, std::string> names;  ///< of languages, as translators know them
};

/// zav translate: writes the texts of one language for a translator.
ExitStatus runTranslate(const Database& database, const TranslateRequest& request, Output& output);
