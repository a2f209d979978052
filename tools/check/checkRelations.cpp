#include "checkRelations.h"

#include <fmt/format.h>

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <utility>
#include <vector>

#include "database/deliveredNumber.h"
#include "database/rawRows.h"

namespace {

/// By number where texts are numbers, so that 9 comes before 10.
struct NumberOrder {
    bool operator()(const std::string& one, const std::string& other) const
    {
        return std::pair(one.size(), one) < std::pair(other.size(), other);
    }
};

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

using Numbers = std::vector<std::optional<std::uint64_t>>;

/// What the library delivers of a column, row by row; nothing for NULL, which has a finding of its
/// own.
Numbers deliveredNumbers(const RawTable& table, std::size_t position, FieldKind kind)
{
    Numbers numbers;
    numbers.reserve(table.rows.size());
    for (const auto& row : table.rows) {
        const RawCell& cell = row[position];
        numbers.push_back(cell.isNull ? Numbers::value_type()
                                      : deliveredNumber(cell.text(), kind).value_or(0));
    }
    return numbers;
}

/// The texts of each fault type, by language; all by the numbers that the library delivers.
class Texts {
public:
    Texts(const Numbers& codes, const RawTable& descriptions, Findings& findings)
        : m_descriptions(descriptions), m_model(descriptionsModel()), m_findings(findings)
    {
        for (const auto& code : codes) {
            if (code && *code <= largestNumber(m_model.column(m_columns.faultType).kind)) {
                m_codes.insert(*code);  // no text can be of a larger one
            }
        }
    }

    void check(std::size_t faultType, std::size_t language)
    {
        const Numbers codes =
            deliveredNumbers(m_descriptions, faultType, m_model.column(m_columns.faultType).kind);
        const Numbers languages =
            deliveredNumbers(m_descriptions, language, m_model.column(m_columns.language).kind);
        for (std::size_t row = 0; row < codes.size(); ++row) {
            if (codes[row] && m_codes.count(*codes[row]) == 0) {
                m_findings.push_back(unknownFault(row, faultType, *codes[row]));
            } else if (codes[row] && languages[row]) {
                checkText(row, language, *codes[row], *languages[row]);
            }
        }
        for (const std::uint64_t code : m_codes) {
            for (const std::uint64_t number : m_languages) {
                checkLanguage(code, number);
            }
        }
    }

private:
    void checkText(std::size_t row, std::size_t position, std::uint64_t code,
                   std::uint64_t language)
    {
        m_languages.insert(language);
        if (!m_known.emplace(code, language).second) {
            m_findings.push_back(duplicateText(row, position, code));
        }
    }

    void checkLanguage(std::uint64_t code, std::uint64_t language)
    {
        if (m_known.count({code, language}) == 0) {
            m_findings.push_back(missingText(code, language));
        }
    }

    Finding unknownFault(std::size_t row, std::size_t position, std::uint64_t code) const
    {
        return {"unknown-fault",
                m_model.name,
                rowLabel(m_model, m_descriptions, row),
                m_columns.faultType,
                shortened(m_descriptions.rows[row][position].bytes),
                fmt::format("the texts, of fault type {}, which is nowhere defined", code),
                "add the fault type, or correct or delete the row",
                false};
    }

    Finding duplicateText(std::size_t row, std::size_t position, std::uint64_t code) const
    {
        return {"duplicate-text",
                m_model.name,
                rowLabel(m_model, m_descriptions, row),
                m_columns.language,
                shortened(m_descriptions.rows[row][position].bytes),
                fmt::format("one more record in this language for fault type {}", code),
                "keep one row for each fault type and language",
                false};
    }

    Finding missingText(std::uint64_t code, std::uint64_t language) const
    {
        return {"missing-text",
                m_model.name,
                condition(m_columns.faultType, std::to_string(code)),
                m_columns.language,
                std::to_string(language),
                "no text in this language, which others have",
                "add the text",
                false};
    }

    const RawTable& m_descriptions;
    const TableModel m_model;
    const DescriptionsColumns m_columns = descriptionsColumns();
    Findings& m_findings;
    std::set<std::uint64_t> m_codes;
    std::set<std::uint64_t> m_languages;
    std::set<std::pair<std::uint64_t, std::uint64_t>> m_known;
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
    if (database.readsWholeTable(model.lookupOf("0"))) {
        findings.push_back(
            {"missing-index", model.name, "", column, "",
             fmt::format("the right records, but {} reads the whole table", model.lookup),
             fmt::format(R"(CREATE INDEX "{0}_{1}" ON "{0}" ("{1}");)", model.name, column),
             false});
    }
}

void checkTexts(const RawTable& faultTypes, const RawTable& descriptions, Findings& findings)
{
    const TableModel::Column key = faultTypeModel().columns.front();
    const std::optional<std::size_t> code = positionOf(key.name, faultTypes);
    const std::optional<std::size_t> faultType =
        positionOf(descriptionsColumns().faultType, descriptions);
    const std::optional<std::size_t> language =
        positionOf(descriptionsColumns().language, descriptions);
    if (code && faultType && language) {
        Texts(deliveredNumbers(faultTypes, *code, key.kind), descriptions, findings)
            .check(*faultType, *language);
    }
}
