#pragma once

#include "Translation.h"
#include "database/stored/StoredFile.h"

/// What is to be translated.
struct TranslationOrder {
    std::string original;
    Translation::Language from;
    Translation::Language to;
    bool isMissingOnly = false;  ///< whether what has a translation is left out
};

/// @param content  of which each text is there once.
/// @return a unit for each text that is there in the one language, by code.
Translation translationOf(const StoredFile& content, const TranslationOrder& order);
