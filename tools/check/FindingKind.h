#pragma once

#include <optional>
#include <string>
#include <vector>

/// How much a finding matters, in rising order.
enum class Severity {
    NOTE,     ///< worth knowing
    WARNING,  ///< it works, and somebody will see something wrong
    ERROR,    ///< an application gets a wrong answer or none
};

enum class FindingKind {
    UNREADABLE,
    DAMAGED,
    MISSING_TABLE,
    MISSING_COLUMN,
    LETTER_CASE,
    COLUMN_ORDER,
    OUT_OF_RANGE,
    NOT_A_NUMBER,
    INEXACT_NUMBER,
    CUT_TEXT,
    DUPLICATE_CODE,
    DUPLICATE_ID,
    UNKNOWN_FAULT,
    CODE_RANGE,
    WAL_MODE,
    JOURNAL_FILE,
    NOT_UTF8,
    CONTROL_CHARACTER,
    MISSING_TEXT,
    MISSING_LANGUAGE,
    DUPLICATE_TEXT,
    DUPLICATE_ALIAS,
    SAME_TEXT,
    PLACEHOLDER_MISMATCH,
    MISSING_INDEX,
    NULL_VALUE,
    QUOTE,
    EXTRA_COLUMN,
    RARE_TYPE,
    SURROUNDING_SPACE,
    EMPTY_TEXT,
};

/// Everything that holds for all findings of a kind.
struct KindInfo {
    FindingKind kind;
    const char* name;
    Severity severity;
    bool isLoss;  ///< the library's records do not tell what the file holds
    const char* help;
};

/// @return all kinds, in the order of FindingKind: errors first.
const std::vector<KindInfo>& allKinds();

const KindInfo& infoOf(FindingKind kind);

/// @return nothing if there is no kind of the name.
std::optional<FindingKind> kindNamed(const std::string& name);

const char* nameOf(Severity severity);
