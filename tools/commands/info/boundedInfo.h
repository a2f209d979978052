#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "database/info/FileInfo.h"

/// fileInfo() in a process of its own: a file made to do harm does it there. A writer that died is
/// dealt with as by the other commands.
///
/// @throws UnreadableFile
FileInfo boundedInfo(const std::string& file, std::optional<std::uint16_t> source = std::nullopt);
