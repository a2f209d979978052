#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

/// What there is in one language.
struct LanguageInfo {
    std::uint16_t language;
    std::size_t withText;                     ///< fault types
    std::size_t withoutText;                  ///< fault types
    std::optional<std::size_t> sameAsSource;  ///< fault types; nothing: not asked for
};

/// What a database file is.
struct FileInfo {
    std::int32_t release;  ///< 0: none
    std::string content;   ///< see ContentHash
    std::size_t faultTypes;
    std::size_t texts;
    std::vector<LanguageInfo> languages;  ///< by number
    bool isWalMode;
    std::uint64_t size;         ///< in bytes
    std::string sqliteVersion;  ///< that has written it last; empty: it does not say
};

/// @param source  the language that others are compared with.
/// @throws UnreadableFile
FileInfo fileInfo(const std::string& file, std::optional<std::uint16_t> source);
