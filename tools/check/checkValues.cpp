#include "checkValues.h"

#include <fmt/format.h>

#include <optional>

#include "database/deliveredNumber.h"
#include "database/rawRows.h"
#include "text/Utf8.h"
#include "text/counted.h"

namespace {

constexpr FieldKind LOOKUP_FIELD =
    FieldKind::NUMBER_16;  // of the code that getFaultTypeDef() takes

/// The checks of one cell.
class CellCheck {
public:
    /// @param isFound  whether the lookup of what is delivered finds the row, if it is by this
    ///                 column.
    CellCheck(const TableModel& model, const TableModel::Column& column, const RawCell& cell,
              bool isFound, const std::string& row)
        : m_model(model), m_column(column), m_cell(cell), m_isFound(isFound), m_row(row)
    {
    }

    void run(Findings& findings) const
    {
        if (m_cell.isNull) {
            findings.push_back(null());
        } else if (m_column.kind == FieldKind::TEXT) {
            checkText(findings);
        } else {
            checkNumber(findings);
        }
    }

private:
    Finding finding(const std::string& kind, const std::string& delivered,
                    const std::string& advice, bool isLoss) const
    {
        return {kind,      m_model.name, m_row, m_column.name, shortened(m_cell.bytes),
                delivered, advice,       isLoss};
    }

    Finding null() const
    {
        Finding found = m_column.kind == FieldKind::TEXT
                            ? finding("null", R"("n/a")", "write '' if there is no text", true)
                            : finding("null", "0", "write a number", true);
        found.value = "NULL";
        return found;
    }

    void checkText(Findings& findings) const
    {
        if (m_cell.bytes.find('\0') != std::string::npos) {
            findings.push_back(finding(
                "cut-text",
                fmt::format("the {} before the NUL byte", counted(m_cell.text().size(), "byte")),
                "remove the NUL byte", true));
        }
        if (!utf8::isValid(m_cell.bytes)) {
            findings.push_back(
                finding("not-utf8", "the bytes unchanged", "store the text in UTF-8", false));
        }
        if (m_cell.bytes.find('\'') != std::string::npos) {
            findings.push_back(
                finding("quote", "the text unchanged, but statement texts break at it",
                        "double the quotes of a record that becomes a statement", false));
        }
    }

    void checkNumber(Findings& findings) const
    {
        const std::optional<std::uint64_t> number = deliveredNumber(m_cell.text(), m_column.kind);
        const std::string delivered = std::to_string(number.value_or(0));
        const bool isMissed = number && !m_isFound;
        if (!number || delivered != m_cell.bytes) {
            findings.push_back(finding(
                kindOfDifference(number), isMissed ? missed(delivered) : delivered,
                fmt::format("write a whole number from 0 to {}", largestNumber(m_column.kind)),
                true));
        } else if (isMissed) {
            findings.push_back(
                finding("inexact-number", missed(delivered),
                        fmt::format("declare {} as {}, and write a number rather than a text",
                                    m_column.name, m_column.sqlType),
                        false));
        } else if (isBeyondLookup(*number)) {
            findings.push_back(
                finding("code-range",
                        fmt::format("{} from the whole table, but {} cannot ask for it", delivered,
                                    m_model.lookup),
                        fmt::format("use codes up to {}", largestNumber(LOOKUP_FIELD)), false));
        }
    }

    std::string missed(const std::string& delivered) const
    {
        return fmt::format("{}, by which {} does not find the row", delivered, m_model.lookup);
    }

    std::string kindOfDifference(const std::optional<std::uint64_t>& number) const
    {
        if (isInteger(m_cell.bytes) && !isPaddedNumber(number)) {
            return "out-of-range";
        }
        return number ? "inexact-number" : "not-a-number";
    }

    /// The right number after zeros.
    bool isPaddedNumber(const std::optional<std::uint64_t>& number) const
    {
        const std::size_t start = m_cell.bytes.find_first_not_of('0');
        return number &&
               (start == std::string::npos ? *number == 0
                                           : m_cell.bytes.substr(start) == std::to_string(*number));
    }

    bool isBeyondLookup(std::uint64_t number) const
    {
        return m_column.isKey && m_column.name == m_model.filterColumn().name &&
               number > largestNumber(LOOKUP_FIELD);
    }

    const TableModel& m_model;
    const TableModel::Column& m_column;
    const RawCell& m_cell;
    const bool m_isFound;
    const std::string& m_row;
};

/// For each row, whether the lookup of what the library delivers in the filter column finds it;
/// true where SQLite cannot be asked, as of a table that has as many columns as SQLite allows.
std::vector<bool> foundRows(const RawDatabase& database, const TableModel& model,
                            std::size_t rowCount)
{
    const TableModel::Column& filter = model.filterColumn();
    std::vector<bool> found =
        database.holds(fmt::format("{0}{1}delivered({0}, {2})", filter.name, model.comparison,
                                   static_cast<int>(filter.kind)),
                       model.name);
    found.resize(rowCount, true);
    return found;
}

}  // namespace

void checkValues(const RawDatabase& database, const TableModel& model, const RawTable& table,
                 Findings& findings)
{
    const std::vector<bool> found = foundRows(database, model, table.rows.size());
    for (std::size_t row = 0; row < table.rows.size(); ++row) {
        const std::string label = rowLabel(model, table, row);
        for (const TableModel::Column& column : model.columns) {
            const std::optional<std::size_t> position = positionOf(column.name, table);
            if (position) {
                const bool isFound = column.name != model.filterColumn().name || found[row];
                CellCheck(model, column, table.rows[row][*position], isFound, label).run(findings);
            }
        }
    }
}
