#pragma once

#include <cstdint>
#include <set>
#include <vector>

#include "CodeSet.h"
#include "check/tables/RowCheck.h"

/// Finds texts of unknown fault types, several texts of one fault type and language, and what a
/// language lacks; all by the numbers that the library delivers.
class LanguageCheck : public RowCheck {
public:
    /// @param languages  that every fault type should have texts in; empty: those that have a text.
    LanguageCheck(const TableModel& descriptions, const CodeSet& codes,
                  const std::set<std::uint16_t>& languages, const FindingSink& sink);

    void read(const TableRow& row) override;
    bool finish() override;
    void readAgain(const TableRow& row) override;

private:
    struct Text {
        std::uint16_t language;
        std::uint16_t code;
        std::uint32_t row;
    };

    void findDuplicates();
    void checkLanguages();
    void checkLanguage(std::uint16_t language) const;
    std::vector<std::uint16_t> codesIn(std::uint16_t language) const;
    Finding missingFinding(FindingKind kind, std::uint16_t language) const;
    Finding missingText(std::uint16_t language, std::uint16_t code) const;
    Finding missingLanguage(std::uint16_t language, std::size_t count,
                            const std::vector<std::uint16_t>& firstCodes) const;

    const TableModel& m_model;
    const CodeSet& m_codes;
    const std::set<std::uint16_t>& m_languages;
    const FindingSink& m_sink;
    const std::size_t m_codeColumn;
    const std::size_t m_languageColumn;
    std::set<std::uint16_t> m_languagesOfRows;
    std::vector<Text> m_texts;  ///< once all are read, in the order of language, code and row
    std::vector<std::uint32_t> m_duplicates;
    std::size_t m_nextDuplicate = 0;
};
