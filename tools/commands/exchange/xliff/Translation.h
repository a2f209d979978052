#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

/// A text and its translation, as tools of translators know it.
struct TranslationUnit {
    std::string id;  ///< such as "101/name"
    std::string source;
    std::string target;  ///< empty: none
    std::string state;   ///< of the target; empty: none
    std::string alias;   ///< of the fault type, for the translator
    std::string comment;
    std::size_t line = 0;  ///< where it begins in the file that it was read from
};

/// Texts of one language, and what is there of them in another.
struct Translation {
    struct Language {
        std::uint16_t number = 0;
        std::string name;  ///< as translators know it
    };

    std::string original;  ///< the file that the texts are of
    Language from;
    Language to;
    std::vector<TranslationUnit> units;
};

/// The state of a target that is still to be written, and that of one which is there.
constexpr const char* NEEDS_TRANSLATION = "needs-translation";
constexpr const char* TRANSLATED = "translated";
