#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "FileInfo.h"
#include "database/RawDatabase.h"

/// Counts which fault types have a text in which language. Codes and languages are taken as the
/// library delivers them.
class LanguageCount {
public:
    /// @param source  the language that others are compared with.
    explicit LanguageCount(std::optional<std::uint16_t> source);

    void addFaultType(const RawCellView& code);

    /// @param row  the columns of ContentHash::valueColumns().
    void addText(const RawRow& row);

    /// @return those that have a text.
    std::vector<LanguageInfo> counts() const;

private:
    using Code = std::uint64_t;
    using TextsByCode = std::map<Code, std::string>;  ///< the digest of each first text

    LanguageInfo infoOf(std::uint16_t language, const TextsByCode& texts) const;
    std::size_t countSame(const TextsByCode& texts) const;
    std::string digestOf(const RawRow& row) const;

    std::optional<std::uint16_t> m_source;
    int m_faultTypeColumn;
    int m_languageColumn;
    int m_nameColumn;
    int m_descriptionColumn;
    std::set<Code> m_codes;
    std::map<std::uint16_t, TextsByCode> m_texts;
};
