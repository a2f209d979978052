#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "check/file/BoundedProcess.h"
#include "database/info/FileInfo.h"

/// fileInfo() in a process of its own: a file made to do harm does it there. A writer that died is
/// dealt with as by the other commands.
class BoundedInfo {
public:
    /// Begins to read.
    ///
    /// @throws UnreadableFile
    explicit BoundedInfo(const std::string& file,
                         std::optional<std::uint16_t> source = std::nullopt);

    /// Waits; to be called once.
    ///
    /// @throws UnreadableFile
    FileInfo take();

private:
    std::string m_file;
    BoundedProcess m_process;
};

/// Begins to read, and waits for it.
///
/// @throws UnreadableFile
FileInfo boundedInfo(const std::string& file, std::optional<std::uint16_t> source = std::nullopt);
