#include "LanguageCount.h"

#include <algorithm>

#include "Sha256.h"
#include "database/TableModel.h"
#include "database/deliveredNumber.h"
#include "database/stored/valueColumns.h"

namespace {

int positionOf(const std::string& column)
{
    const std::vector<TableModel::Column> columns = valueColumns(descriptionsModel());
    const auto found = std::find_if(columns.begin(), columns.end(),
                                    [&](const auto& each) { return each.name == column; });
    return static_cast<int>(found - columns.begin());
}

std::uint64_t numberIn(const RawCellView& cell, FieldKind kind)
{
    return deliveredNumber(std::string(cell.text()), kind).value_or(0);
}

}  // namespace

LanguageCount::LanguageCount(std::optional<std::uint16_t> source)
    : m_source(source),
      m_faultTypeColumn(positionOf(descriptionsColumns().faultType)),
      m_languageColumn(positionOf(descriptionsColumns().language)),
      m_nameColumn(positionOf(descriptionsColumns().name)),
      m_descriptionColumn(positionOf(descriptionsColumns().description))
{
}

void LanguageCount::addFaultType(const RawCellView& code)
{
    m_codes.insert(numberIn(code, FieldKind::NUMBER_32));
}

void LanguageCount::addText(const RawRow& row)
{
    const auto language =
        static_cast<std::uint16_t>(numberIn(row.cell(m_languageColumn), FieldKind::NUMBER_16));
    const Code code = numberIn(row.cell(m_faultTypeColumn), FieldKind::NUMBER_16);
    m_texts[language].try_emplace(code, m_source ? digestOf(row) : "");
}

std::vector<LanguageInfo> LanguageCount::counts() const
{
    std::vector<LanguageInfo> languages;
    for (const auto& [language, texts] : m_texts) {
        languages.push_back(infoOf(language, texts));
    }
    return languages;
}

LanguageInfo LanguageCount::infoOf(std::uint16_t language, const TextsByCode& texts) const
{
    LanguageInfo info = {language, 0, 0, std::nullopt};
    for (const Code code : m_codes) {
        ++(texts.count(code) > 0 ? info.withText : info.withoutText);
    }
    if (m_source && *m_source != language) {
        info.sameAsSource = countSame(texts);
    }
    return info;
}

std::size_t LanguageCount::countSame(const TextsByCode& texts) const
{
    const auto source = m_texts.find(*m_source);
    if (source == m_texts.end()) {
        return 0;
    }
    return static_cast<std::size_t>(
        std::count_if(texts.begin(), texts.end(), [&](const auto& text) {
            const auto original = source->second.find(text.first);
            return m_codes.count(text.first) > 0 && original != source->second.end() &&
                   original->second == text.second;
        }));
}

std::string LanguageCount::digestOf(const RawRow& row) const
{
    Sha256 hash;
    for (const int column : {m_nameColumn, m_descriptionColumn}) {
        const RawCellView cell = row.cell(column);
        hash.add(std::to_string(cell.bytes.size()) + ':');
        hash.add(cell.bytes);
    }
    return hash.digest();
}
