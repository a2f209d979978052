#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "FindingKind.h"
#include "database/RawCell.h"

/// Which row a finding is about.
struct RowRef {
    std::string label;                ///< as an SQL condition where there is one
    std::string keyColumn;            ///< empty: the row has no key
    std::optional<std::int64_t> key;  ///< if that is a whole number
};

/// One thing about a database file that would surprise somebody. What does not apply stays empty.
struct Finding {
    explicit Finding(FindingKind findingKind) : kind(findingKind) {}

    FindingKind kind;
    std::string table;
    RowRef row;
    std::string column;
    std::optional<RawCell> value;      ///< what the file holds
    std::optional<RawCell> delivered;  ///< what the library makes of it
    std::string what;                  ///< what is wrong and, after a semicolon, what to do
};

/// @return whether the library's records do not tell what the file holds.
inline bool isLoss(const Finding& finding)
{
    const bool isDelivered = finding.value && finding.delivered && !finding.value->isNull() &&
                             finding.value->bytes == finding.delivered->bytes;
    return infoOf(finding.kind).isLoss && !isDelivered;
}

using FindingSink = std::function<void(const Finding&)>;
