#pragma once

/// The names of XLIFF 1.2 that stand in what is written and in what is read.
namespace xliff {

constexpr const char* ROOT = "xliff";
constexpr const char* VERSION = "1.2";
constexpr const char* DOCUMENT = "file";
constexpr const char* ORIGINAL = "original";
constexpr const char* SOURCE_LANGUAGE = "source-language";
constexpr const char* TARGET_LANGUAGE = "target-language";
constexpr const char* BODY = "body";
constexpr const char* UNIT = "trans-unit";
constexpr const char* ID = "id";
constexpr const char* SOURCE = "source";
constexpr const char* TARGET = "target";
constexpr const char* STATE = "state";

/// The attribute "original" ends with the numbers of the languages, such as ";from=1;to=3": it is
/// what every tool keeps.
constexpr const char* FROM = ";from=";
constexpr const char* TO = ";to=";

}  // namespace xliff
