#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "check/FindingKind.h"
#include "commands/ExitStatus.h"
#include "database/info/FileInfo.h"
#include "database/replacement/Replacement.h"
#include "output/Output.h"

/// The file that is replaced.
struct OldDatabase {
    bool exists;
    std::optional<FileInfo> info;  ///< nothing if it cannot be read
};

/// A number that is said of a new database, with its name.
using NamedCount = std::pair<std::string, std::uint64_t>;

/// A new database, and what is to become of it. What it calls may throw RefusedReplacement,
/// UnfitFile for what the new file is, or UnreadableFile.
struct Placing {
    std::string target;
    std::string name;                       ///< by which the new file is spoken of
    std::string refusal;                    ///< what has happened then, such as "not installed"
    Severity failOn = Severity::ERROR;      ///< from which on a finding refuses it
    Severity showFrom = Severity::ERROR;    ///< from which on a finding is shown
    std::function<void()> prepare = [] {};  ///< before anything is written
    std::function<void(Replacement&)> fill;
    std::function<void(const FileInfo&)> judge = [](const FileInfo&) {};
    std::function<void(const FileInfo&, const OldDatabase&)> compare = [](const FileInfo&,
                                                                          const OldDatabase&) {};
    std::function<std::vector<NamedCount>()> counts = [] { return std::vector<NamedCount>(); };
};

/// Makes a database beside its place, checks it, puts it there, and says what has been replaced by
/// what: whenever the process or the power ends, the old file is there or the new one.
ExitStatus placeDatabase(const Placing& placing, Output& output);

/// @throws RefusedReplacement if there is a file already which is not to be replaced.
void refuseExisting(Replacement& replacement, const Placing& placing, bool isForced);
