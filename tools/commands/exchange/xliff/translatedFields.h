#pragma once

#include <cstddef>
#include <string>
#include <vector>

/// A field of a text that is translated: all that are shown, and not the author's comment.
struct TranslatedField {
    std::string name;
    std::size_t position;  ///< in a StoredRow
};

const std::vector<TranslatedField>& translatedFields();

/// @return the position of the comment in a StoredRow of a text.
std::size_t commentPosition();
