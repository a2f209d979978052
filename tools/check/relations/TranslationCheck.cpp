#include "TranslationCheck.h"

#include <algorithm>
#include <functional>
#include <map>
#include <tuple>

#include "placeholders.h"
#include "text/formatted.h"
#include "text/shortened.h"

namespace {

constexpr std::uint32_t NO_PLACEHOLDERS = 0;
constexpr std::uint64_t NOTHING_TO_COMPARE = 0;
constexpr char SET_END = '\0';  // which stands in no set: what is read ends at a NUL byte

std::uint32_t bitOf(std::size_t column)
{
    return 1U << column;
}

/// Never a NUL byte.
char markOf(std::size_t column)
{
    return static_cast<char>(column + 1);
}

std::string placeholdersText(std::string_view set)
{
    return set.empty() ? "no placeholder" : shortened(set);
}

}  // namespace

TranslationCheck::TranslationCheck(const TableModel& descriptions, const FindingSink& sink)
    : m_model(descriptions),
      m_sink(sink),
      m_codeColumn(descriptions.positionOf(descriptionsColumns().faultType)),
      m_languageColumn(descriptions.positionOf(descriptionsColumns().language)),
      m_translatedColumns{descriptions.positionOf(descriptionsColumns().name),
                          descriptions.positionOf(descriptionsColumns().shortDescription),
                          descriptions.positionOf(descriptionsColumns().description)},
      m_sets(1, SET_END)  // of the rows without placeholders
{
}

void TranslationCheck::read(const TableRow& row)
{
    const std::optional<std::uint64_t> code = row.number(m_codeColumn);
    const std::optional<std::uint64_t> language = row.number(m_languageColumn);
    if (code && language) {
        Text& text = m_texts.emplace_back();
        text.sameness = samenessOf(row);
        text.row = static_cast<std::uint32_t>(row.number());
        text.code = static_cast<std::uint16_t>(*code);
        text.language = static_cast<std::uint16_t>(*language);
        readTexts(row, text);
    }
}

/// Texts with the same 64 bits are taken for the same: it is next to impossible that two others of
/// one fault type have them by chance.
std::uint64_t TranslationCheck::samenessOf(const TableRow& row) const
{
    constexpr std::uint64_t MULTIPLIER = 0x9E3779B97F4A7C15;
    std::uint64_t sum = 1;
    for (const std::size_t column : m_translatedColumns) {
        const std::optional<RawCellView> cell = row.cell(column);
        if (!cell || cell->isNull() || cell->bytes.empty()) {
            return NOTHING_TO_COMPARE;
        }
        sum = sum * MULTIPLIER + std::hash<std::string_view>()(cell->bytes);
        sum ^= sum >> 29U;
    }
    return sum;
}

/// Notes which columns have a text, and the placeholders in them.
void TranslationCheck::readTexts(const TableRow& row, Text& text)
{
    const std::size_t start = m_sets.size();
    for (std::size_t column = 0; column < m_model.columns.size(); ++column) {
        const bool isText = m_model.columns[column].kind == FieldKind::TEXT;
        const std::optional<RawCellView> cell = isText ? row.cell(column) : std::nullopt;
        if (!cell || cell->text().empty()) {
            continue;
        }
        text.filled |= bitOf(column);
        const std::string set = placeholdersIn(cell->text());
        if (!set.empty()) {
            m_sets += markOf(column);
            m_sets += set;
            m_sets += SET_END;
        }
    }
    if (m_sets.size() > start) {
        m_sets += SET_END;
        text.sets = static_cast<std::uint32_t>(start);
    }
}

bool TranslationCheck::finish()
{
    std::sort(m_texts.begin(), m_texts.end(), [](const Text& one, const Text& other) {
        return std::tie(one.code, one.language, one.row) <
               std::tie(other.code, other.language, other.row);
    });
    for (auto begin = m_texts.begin(); begin != m_texts.end();) {
        const auto end = std::find_if(
            begin, m_texts.end(), [begin](const Text& text) { return text.code != begin->code; });
        const bool hasPlaceholders =
            std::any_of(begin, end, [](const Text& text) { return text.sets != NO_PLACEHOLDERS; });
        for (std::size_t column = 0; hasPlaceholders && column < m_model.columns.size(); ++column) {
            findMismatches(begin, end, column);
        }
        findSameTexts(begin, end);
        begin = end;
    }
    std::sort(m_remarks.begin(), m_remarks.end(), [](const Remark& one, const Remark& other) {
        return std::tie(one.row, one.kind, one.column) <
               std::tie(other.row, other.kind, other.column);
    });
    return !m_remarks.empty();
}

/// Of texts that are the same, that of the smallest language is taken for the original.
void TranslationCheck::findSameTexts(const Iterator& begin, const Iterator& end)
{
    std::stable_sort(begin, end, [](const Text& one, const Text& other) {
        return one.sameness < other.sameness;
    });
    auto original = begin;
    for (auto text = begin; text != end; ++text) {
        if (text->sameness != original->sameness) {
            original = text;
        }
        if (text->sameness != NOTHING_TO_COMPARE && text->language != original->language) {
            m_remarks.push_back(
                {text->row, NO_PLACEHOLDERS, FindingKind::SAME_TEXT, original->language, 0});
        }
    }
}

/// The placeholders of most texts are taken for the right ones, or else those of the smallest
/// language. A text that is not there is no translation.
void TranslationCheck::findMismatches(const Iterator& begin, const Iterator& end,
                                      std::size_t column)
{
    std::map<std::string_view, std::size_t> counts;
    for (auto text = begin; text != end; ++text) {
        if ((text->filled & bitOf(column)) != 0) {
            ++counts[setIn(text->sets, column)];
        }
    }
    if (counts.size() < 2) {
        return;
    }
    auto right = end;
    std::size_t most = 0;
    for (auto text = begin; text != end; ++text) {
        const bool isThere = (text->filled & bitOf(column)) != 0;
        const std::size_t count = isThere ? counts[setIn(text->sets, column)] : 0;
        if (count > most) {
            most = count;
            right = text;
        }
    }
    const std::string_view rightSet = setIn(right->sets, column);
    for (auto text = begin; text != end; ++text) {
        if ((text->filled & bitOf(column)) != 0 && text->language != right->language &&
            setIn(text->sets, column) != rightSet) {
            m_remarks.push_back({text->row, right->sets, FindingKind::PLACEHOLDER_MISMATCH,
                                 right->language, static_cast<std::uint8_t>(column)});
        }
    }
}

/// @param sets  position in m_sets.
/// @return the placeholders of one column; empty: there are none.
std::string_view TranslationCheck::setIn(std::uint32_t sets, std::size_t column) const
{
    for (const char* piece = m_sets.data() + sets; *piece != SET_END;) {
        const std::string_view set = piece + 1;
        if (*piece == markOf(column)) {
            return set;
        }
        piece = set.data() + set.size() + 1;
    }
    return {};
}

void TranslationCheck::readAgain(const TableRow& row)
{
    for (; m_nextRemark < m_remarks.size() && m_remarks[m_nextRemark].row == row.number();
         ++m_nextRemark) {
        report(row, m_remarks[m_nextRemark]);
    }
}

void TranslationCheck::report(const TableRow& row, const Remark& remark) const
{
    if (remark.kind == FindingKind::SAME_TEXT) {
        m_sink(row.finding(remark.kind,
                           formatted("name, short description and description are those of "
                                     "language {}; translate them",
                                     remark.otherLanguage)));
        return;
    }
    const std::string set = placeholdersIn(row.cell(remark.column)->text());
    m_sink(row.finding(
        remark.kind, remark.column,
        formatted("has {}, but language {} has {}; use the same", placeholdersText(set),
                  remark.otherLanguage, placeholdersText(setIn(remark.otherSets, remark.column)))));
}
