#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "check/tables/RowCheck.h"

/// Compares the texts of one fault type in its languages: finds those that are the same, and those
/// whose placeholders differ.
class TranslationCheck : public RowCheck {
public:
    TranslationCheck(const TableModel& descriptions, const FindingSink& sink);

    void read(const TableRow& row) override;
    bool finish() override;
    void readAgain(const TableRow& row) override;

private:
    struct Text {
        std::uint64_t sameness;  ///< of what a translation changes; 0: nothing to compare
        std::uint32_t row;
        std::uint16_t code;
        std::uint16_t language;
        std::uint32_t filled;  ///< one bit for each column with a text
    };

    struct Placeholders {
        std::uint32_t row;
        std::uint32_t column;
        std::uint32_t set;  ///< position in m_sets
    };

    /// What is said about a row in the second reading.
    struct Remark {
        std::uint32_t row;
        FindingKind kind;
        std::size_t column;
        std::uint16_t otherLanguage;
        std::uint32_t otherSet;
    };

    using Iterator = std::vector<Text>::iterator;

    std::uint64_t samenessOf(const TableRow& row) const;
    std::uint32_t readTexts(const TableRow& row);
    std::uint32_t idOf(const std::string& set);
    void findSameTexts(Iterator begin, Iterator end);
    void findMismatches(Iterator begin, Iterator end, std::size_t column);
    std::uint32_t setIn(std::uint32_t row, std::size_t column) const;
    void report(const TableRow& row, const Remark& remark) const;

    const TableModel& m_model;
    const FindingSink& m_sink;
    const std::size_t m_codeColumn;
    const std::size_t m_languageColumn;
    const std::array<std::size_t, 3> m_translatedColumns;
    std::vector<Text> m_texts;
    std::vector<Placeholders> m_placeholders;  ///< of the texts that have some
    std::map<std::string, std::uint32_t> m_setIds;
    std::vector<std::string> m_sets;
    std::vector<Remark> m_remarks;
    std::size_t m_nextRemark = 0;
};
