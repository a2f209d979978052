#include "LanguageCheck.h"
#include "text/formatted.h"

#include <algorithm>
#include <string>
#include <tuple>

namespace {

constexpr std::size_t CODES_SHOWN = 3;

}  // namespace

LanguageCheck::LanguageCheck(const TableModel& descriptions, const CodeSet& codes,
                             const std::set<std::uint16_t>& languages, const FindingSink& sink)
    : m_model(descriptions),
      m_codes(codes),
      m_languages(languages),
      m_sink(sink),
      m_codeColumn(descriptions.positionOf(descriptionsColumns().faultType)),
      m_languageColumn(descriptions.positionOf(descriptionsColumns().language))
{
}

void LanguageCheck::read(const TableRow& row)
{
    const std::optional<std::uint64_t> language = row.number(m_languageColumn);
    if (language) {
        m_languagesOfRows.insert(static_cast<std::uint16_t>(*language));
    }
    const std::optional<std::uint64_t> code = row.number(m_codeColumn);
    if (!code) {
        return;
    }
    if (!m_codes.contains(*code)) {
        m_sink(row.finding(
            FindingKind::UNKNOWN_FAULT, m_codeColumn,
            formatted("there is no fault type {}; add it, or correct or delete the text", *code)));
        return;
    }
    if (language) {
        m_texts.push_back({static_cast<std::uint16_t>(*language), static_cast<std::uint16_t>(*code),
                           static_cast<std::uint32_t>(row.number())});
    }
}

bool LanguageCheck::finish()
{
    std::sort(m_texts.begin(), m_texts.end(), [](const Text& one, const Text& other) {
        return std::tie(one.language, one.code, one.row) <
               std::tie(other.language, other.code, other.row);
    });
    findDuplicates();
    checkLanguages();
    return !m_duplicates.empty();
}

void LanguageCheck::findDuplicates()
{
    for (std::size_t i = 1; i < m_texts.size(); ++i) {
        const Text& before = m_texts[i - 1];
        const Text& text = m_texts[i];
        if (std::tie(before.language, before.code) == std::tie(text.language, text.code)) {
            m_duplicates.push_back(text.row);
        }
    }
    std::sort(m_duplicates.begin(), m_duplicates.end());
}

void LanguageCheck::readAgain(const TableRow& row)
{
    if (m_nextDuplicate < m_duplicates.size() && m_duplicates[m_nextDuplicate] == row.number()) {
        ++m_nextDuplicate;
        m_sink(row.finding(FindingKind::DUPLICATE_TEXT, m_languageColumn,
                           formatted("one more text in this language for fault type {}; keep one",
                                     *row.number(m_codeColumn))));
    }
}

void LanguageCheck::checkLanguages()
{
    for (const std::uint16_t language : m_languages.empty() ? m_languagesOfRows : m_languages) {
        checkLanguage(language);
    }
}

/// @return the codes of the fault types that have a text, in order.
std::vector<std::uint16_t> LanguageCheck::codesIn(std::uint16_t language) const
{
    const auto isBefore = [](const Text& text, std::uint32_t number) {
        return text.language < number;
    };
    const auto begin = std::lower_bound(m_texts.begin(), m_texts.end(), language, isBefore);
    const auto end = std::lower_bound(begin, m_texts.end(), language + 1U, isBefore);
    std::vector<std::uint16_t> codes;
    for (auto text = begin; text != end; ++text) {
        if (codes.empty() || codes.back() != text->code) {
            codes.push_back(text->code);
        }
    }
    return codes;
}

/// Goes through few codes where most are missing, so that the work stays in proportion to the texts
/// however many languages there are.
void LanguageCheck::checkLanguage(std::uint16_t language) const
{
    const std::vector<std::uint16_t>& all = m_codes.sorted();
    const std::vector<std::uint16_t> present = codesIn(language);
    const std::size_t count = all.size() - present.size();
    const bool isMost = count * 4 > all.size();
    const std::size_t namedCodes = isMost ? std::min(count, CODES_SHOWN) : count;

    std::vector<std::uint16_t> lacking;
    auto next = present.begin();
    for (auto code = all.begin(); lacking.size() < namedCodes; ++code) {
        if (next != present.end() && *next == *code) {
            ++next;
        } else {
            lacking.push_back(*code);
        }
    }
    if (isMost) {
        m_sink(missingLanguage(language, count, lacking));
        return;
    }
    for (const std::uint16_t code : lacking) {
        m_sink(missingText(language, code));
    }
}

Finding LanguageCheck::missingText(std::uint16_t language, std::uint16_t code) const
{
    Finding found = missingFinding(FindingKind::MISSING_TEXT, language);
    const std::string& column = m_model.columns[m_codeColumn].name;
    found.row = rowsWith(column, std::to_string(code));
    found.what = "the fault type has no text in this language; add it";
    return found;
}

Finding LanguageCheck::missingLanguage(std::uint16_t language, std::size_t count,
                                       const std::vector<std::uint16_t>& firstCodes) const
{
    Finding found = missingFinding(FindingKind::MISSING_LANGUAGE, language);
    found.what = formatted("{} of {} fault types have no text in this language: {}{}; add them",
                           count, m_codes.sorted().size(), listed(firstCodes, ", "),
                           count > firstCodes.size() ? ", ..." : "");
    return found;
}

Finding LanguageCheck::missingFinding(FindingKind kind, std::uint16_t language) const
{
    Finding found(kind);
    found.table = m_model.name;
    found.column = m_model.columns[m_languageColumn].name;
    found.value = RawCell::ofNumber(language);
    return found;
}
