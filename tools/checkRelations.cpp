#include "checkRelations.h"

#include <fmt/format.h>

#include <map>
#include <set>
#include <utility>

#include "rawRows.h"

namespace {

/// By number where texts are numbers, so that 9 comes before 10.
struct NumberOrder {
    bool operator()(const std::string& one, const std::string& other) const
    {
        return std::pair(one.size(), one) < std::pair(other.size(), other);
    }
};

using Values = std::set<std::string, NumberOrder>;
using Occurrences = std::map<std::string, int, NumberOrder>;

/// How often each value stands in a column; NULL counts as none.
Occurrences occurrences(const std::string& column, const RawTable& table)
{
    Occurrences counts;
    const std::optional<std::size_t> position = positionOf(column, table);
    for (const auto& row : table.rows) {
        if (position && !row[*position].isNull) {
            ++counts[row[*position].text()];
        }
    }
    return counts;
}

Finding duplicateKey(const TableModel& model, const std::string& value, int count)
{
    const std::string& key = model.columns.front().name;
    const bool isFilter = key == model.filterColumn().name;
    return {isFilter ? "duplicate-code" : "duplicate-id",
            model.name,
            condition(key, value),
            key,
            shortened(value),
            isFilter ? fmt::format("{} records from the whole table, but none from {}", count,
                                   model.lookup)
                     : fmt::format("{} records", count),
            fmt::format("keep one; declare {} as {}", key, model.columns.front().sqlType),
            false};
}

const char* const DESCRIPTIONS = "descriptions";
const char* const FAULT_TYPE = "id_fault_type";
const char* const LANGUAGE = "id_language";

/// The texts of each fault type, by language.
class Texts {
public:
    Texts(const RawTable& faultTypes, const RawTable& descriptions, Findings& findings)
        : m_codes(occurrences("code", faultTypes)),
          m_descriptions(descriptions),
          m_model(descriptionsModel()),
          m_findings(findings)
    {
    }

    void check(std::size_t faultType, std::size_t language)
    {
        for (std::size_t row = 0; row < m_descriptions.rows.size(); ++row) {
            checkRow(row, m_descriptions.rows[row][faultType], m_descriptions.rows[row][language]);
        }
        for (const auto& [code, count] : m_codes) {
            for (const std::string& number : m_languages) {
                checkLanguage(code, number);
            }
        }
    }

private:
    void checkRow(std::size_t row, const RawCell& faultType, const RawCell& language)
    {
        if (faultType.isNull) {
            return;  // a finding of its own
        }
        const std::string code = faultType.text();
        if (m_codes.count(code) == 0) {
            m_findings.push_back(unknownFault(row, code));
            return;
        }
        if (language.isNull) {
            return;
        }
        const std::string number = language.text();
        m_languages.insert(number);
        if (!m_known.emplace(code, number).second) {
            m_findings.push_back(duplicateText(row, code, number));
        }
    }

    void checkLanguage(const std::string& code, const std::string& language)
    {
        if (m_known.count({code, language}) == 0) {
            m_findings.push_back(missingText(code, language));
        }
    }

    Finding unknownFault(std::size_t row, const std::string& code) const
    {
        return {"unknown-fault",
                DESCRIPTIONS,
                rowLabel(m_model, m_descriptions, row),
                FAULT_TYPE,
                shortened(code),
                "the texts, of a fault type that is nowhere defined",
                "add the fault type, or delete the row",
                false};
    }

    Finding duplicateText(std::size_t row, const std::string& code,
                          const std::string& language) const
    {
        return {"duplicate-text",
                DESCRIPTIONS,
                rowLabel(m_model, m_descriptions, row),
                LANGUAGE,
                shortened(language),
                fmt::format("one more record in this language for fault type {}", shortened(code)),
                "keep one row for each fault type and language",
                false};
    }

    static Finding missingText(const std::string& code, const std::string& language)
    {
        return {"missing-text",
                DESCRIPTIONS,
                condition(FAULT_TYPE, code),
                LANGUAGE,
                shortened(language),
                "no text in this language, which others have",
                "add the text",
                false};
    }

    const Occurrences m_codes;
    const RawTable& m_descriptions;
    const TableModel m_model;
    Findings& m_findings;
    Values m_languages;
    std::set<std::pair<std::string, std::string>> m_known;
};

}  // namespace

void checkKeys(const TableModel& model, const RawTable& table, Findings& findings)
{
    for (const auto& [value, count] : occurrences(model.columns.front().name, table)) {
        if (count > 1) {
            findings.push_back(duplicateKey(model, value, count));
        }
    }
}

void checkIndex(const RawDatabase& database, const TableModel& model, Findings& findings)
{
    const std::string& column = model.filterColumn().name;
    const std::string query =
        fmt::format(R"(SELECT * FROM "{}" WHERE {}{}0)", model.name, column, model.comparison);
    if (database.readsWholeTable(query)) {
        findings.push_back(
            {"missing-index", model.name, "", column, "",
             fmt::format("the right records, but {} reads the whole table", model.lookup),
             fmt::format(R"(CREATE INDEX "{0}_{1}" ON "{0}" ("{1}");)", model.name, column),
             false});
    }
}

void checkTexts(const RawTable& faultTypes, const RawTable& descriptions, Findings& findings)
{
    const std::optional<std::size_t> faultType = positionOf(FAULT_TYPE, descriptions);
    const std::optional<std::size_t> language = positionOf(LANGUAGE, descriptions);
    if (positionOf("code", faultTypes) && faultType && language) {
        Texts(faultTypes, descriptions, findings).check(*faultType, *language);
    }
}
