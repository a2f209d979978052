#pragma once

#include <array>
#include <cstdint>
#include <deque>
#include <string>
#include <string_view>

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
        std::uint32_t sets;    ///< position in m_sets
    };

    /// What is said about a row in the second reading.
    struct Remark {
        std::uint32_t row;
        std::uint32_t otherSets;  ///< position in m_sets
        FindingKind kind;
        std::uint16_t otherLanguage;
        std::uint8_t column;
    };

    using Iterator = std::deque<Text>::iterator;

    std::uint64_t samenessOf(const TableRow& row) const;
    void readTexts(const TableRow& row, Text& text);
    void findSameTexts(const Iterator& begin, const Iterator& end);
    void findMismatches(const Iterator& begin, const Iterator& end, std::size_t column);
    std::string_view setIn(std::uint32_t sets, std::size_t column) const;
    void report(const TableRow& row, const Remark& remark) const;

    const TableModel& m_model;
    const FindingSink& m_sink;
    const std::size_t m_codeColumn;
    const std::size_t m_languageColumn;
    const std::array<std::size_t, 3> m_translatedColumns;
    // Of as many rows as the file holds: no list takes more than its elements, not while it grows.
    std::deque<Text> m_texts;
    /// The placeholders of each row that has some, one piece of text for each column that has: the
    /// column, the set, a NUL byte; a NUL byte ends the row.
    std::string m_sets;
    std::deque<Remark> m_remarks;
    std::size_t m_nextRemark = 0;
};
