#pragma once

#include <cstdint>
#include <set>
#include <string>
#include <vector>

#include "database/Database.h"
#include "database/RawCell.h"

/// A row as the file holds it: the cells of valueColumns() in their order.
using StoredRow = std::vector<RawCell>;

/// All that a file says, as it holds it.
struct StoredFile {
    // Positions in the rows.
    static constexpr std::size_t CODE = 0;      ///< of fault types and texts
    static constexpr std::size_t ALIAS = 1;     ///< of fault types
    static constexpr std::size_t TYPE = 2;      ///< of fault types
    static constexpr std::size_t LANGUAGE = 1;  ///< of texts
    static constexpr std::size_t NAME = 2;      ///< of texts; the others follow

    std::vector<StoredRow> faultTypes;  ///< by code, then by what else they hold
    std::vector<StoredRow> texts;       ///< by code, then language, then what else they hold
};

/// @param languages  empty: all.
bool isInOneOf(const std::set<std::uint16_t>& languages, const StoredRow& text);

bool hasTextIn(std::uint16_t language, const StoredFile& content);

/// @throws UnreadableFile
StoredFile readStored(const Database& database);
