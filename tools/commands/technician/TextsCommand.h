#pragma once

#include <cstdint>
#include <optional>

#include "commands/ExitStatus.h"
#include "database/Database.h"
#include "output/Output.h"

/// Which texts are wanted; all of them unless narrowed.
struct TextsFilter {
    std::optional<std::uint32_t> code;
    std::optional<std::uint16_t> language;

    bool isSet() const { return code || language; }
};

/// zav texts: the texts of fault types.
ExitStatus runTexts(Database& database, const TextsFilter& filter, Output& output);
