#pragma once

#include <optional>
#include <string>
#include <vector>

#include "StoredFile.h"

/// A field of a fault type or text, in the old file and in the new one.
struct FieldChange {
    std::string field;
    std::optional<RawCell> before;  ///< nothing: what it is a field of was not there
    std::optional<RawCell> after;   ///< ... or is not there any more
};

/// A fault type, or the text of one in a language, that is not in both files as it is.
struct Change {
    enum class Kind { ADDED, REMOVED, CHANGED };

    Kind kind;
    RawCell code;
    std::optional<RawCell> language;  ///< of a text
    std::vector<FieldChange> fields;  ///< that differ; of what was added or removed, all
};

/// Compares what files say by code, language and field: neither row ids nor the order of rows
/// count. Of several texts of one fault type and language, the first is compared with the first,
/// and so on.
///
/// @return by code, the fault type before its texts, these by language.
std::vector<Change> compareStored(const StoredFile& before, const StoredFile& after);
