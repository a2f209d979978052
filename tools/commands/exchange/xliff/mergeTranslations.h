#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "Translation.h"
#include "commands/exchange/Mistake.h"
#include "database/stored/StoredFile.h"

/// How many texts a translation has changed.
struct MergedTexts {
    std::size_t changed = 0;  ///< that were another text
    std::size_t added = 0;    ///< that were none
};

/// Takes what is translated into a file.
///
/// @param name      of the file that the translations were read from, for the mistakes.
/// @param content   of which each text is there once; of use only if there are no mistakes.
/// @param mistakes  gets all that are found.
MergedTexts mergeTranslations(const std::vector<Translation>& translations, const std::string& name,
                              StoredFile& content, Mistakes& mistakes);
