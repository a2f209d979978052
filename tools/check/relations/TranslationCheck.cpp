#include "TranslationCheck.h"

#include <algorithm>
#include <functional>
#include <tuple>

#include "placeholders.h"
#include "text/formatted.h"
#include "text/shortened.h"

namespace {

constexpr std::uint32_t NO_PLACEHOLDERS = 0;
constexpr std::uint64_t NOTHING_TO_COMPARE = 0;

std::uint32_t bitOf(std::size_t column)
{
    return 1U << column;
}

std::string placeholdersText(const std::string& set)
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
                          descriptions.positionOf(descriptionsColumns().description)}
{
    idOf("");
}

void TranslationCheck::read(const TableRow& row)
{
    const std::optional<std::uint64_t> code = row.number(m_codeColumn);
    const std::optional<std::uint64_t> language = row.number(m_languageColumn);
    if (code && language) {
        m_texts.push_back({samenessOf(row), static_cast<std::uint32_t>(row.number()),
                           static_cast<std::uint16_t>(*code), static_cast<std::uint16_t>(*language),
                           readTexts(row)});
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

/// Notes the placeholders. @return one bit for each column that has a text.
std::uint32_t TranslationCheck::readTexts(const TableRow& row)
{
    std::uint32_t filled = 0;
    for (std::size_t column = 0; column < m_model.columns.size(); ++column) {
        const bool isText = m_model.columns[column].kind == FieldKind::TEXT;
        const std::optional<RawCellView> cell = isText ? row.cell(column) : std::nullopt;
        if (!cell || cell->text().empty()) {
            continue;
        }
        filled |= bitOf(column);
        const std::string set = placeholdersIn(cell->text());
        if (!set.empty()) {
            m_placeholders.push_back({static_cast<std::uint32_t>(row.number()),
                                      static_cast<std::uint32_t>(column), idOf(set)});
        }
    }
    return filled;
}

std::uint32_t TranslationCheck::idOf(const std::string& set)
{
    const auto id = static_cast<std::uint32_t>(m_sets.size());
    const auto [known, isNew] = m_setIds.emplace(set, id);
    if (isNew) {
        m_sets.push_back(set);
    }
    return known->second;
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
        for (std::size_t column = 0; column < m_model.columns.size(); ++column) {
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
void TranslationCheck::findSameTexts(Iterator begin, Iterator end)
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
                {text->row, FindingKind::SAME_TEXT, 0, original->language, NO_PLACEHOLDERS});
        }
    }
}

/// The placeholders of most texts are taken for the right ones, or else those of the smallest
/// language. A text that is not there is no translation.
void TranslationCheck::findMismatches(Iterator begin, Iterator end, std::size_t column)
{
    if (m_placeholders.empty()) {
        return;
    }
    std::map<std::uint32_t, std::size_t> counts;
    for (auto text = begin; text != end; ++text) {
        if ((text->filled & bitOf(column)) != 0) {
            ++counts[setIn(text->row, column)];
        }
    }
    if (counts.size() < 2) {
        return;
    }
    auto right = end;
    std::size_t most = 0;
    for (auto text = begin; text != end; ++text) {
        const bool isThere = (text->filled & bitOf(column)) != 0;
        const std::size_t count = isThere ? counts[setIn(text->row, column)] : 0;
        if (count > most) {
            most = count;
            right = text;
        }
    }
    const std::uint32_t rightSet = setIn(right->row, column);
    for (auto text = begin; text != end; ++text) {
        if ((text->filled & bitOf(column)) != 0 && text->language != right->language &&
            setIn(text->row, column) != rightSet) {
            m_remarks.push_back(
                {text->row, FindingKind::PLACEHOLDER_MISMATCH, column, right->language, rightSet});
        }
    }
}

std::uint32_t TranslationCheck::setIn(std::uint32_t row, std::size_t column) const
{
    const auto found = std::lower_bound(
        m_placeholders.begin(), m_placeholders.end(), std::pair(std::size_t{row}, column),
        [](const Placeholders& one, const std::pair<std::size_t, std::size_t>& place) {
            return std::pair(std::size_t{one.row}, std::size_t{one.column}) < place;
        });
    const bool isThere =
        found != m_placeholders.end() && found->row == row && found->column == column;
    return isThere ? found->set : NO_PLACEHOLDERS;
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
    m_sink(
        row.finding(remark.kind, remark.column,
                    formatted("has {}, but language {} has {}; use the same", placeholdersText(set),
                              remark.otherLanguage, placeholdersText(m_sets[remark.otherSet]))));
}
