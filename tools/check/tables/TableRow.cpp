#include "TableRow.h"

#include <algorithm>
#include <charconv>

#include "database/deliveredNumber.h"
#include "text/SqlText.h"

namespace {

/// What the library makes of a cell.
RawCell deliveredCell(const RawCellView& cell, FieldKind kind)
{
    if (kind != FieldKind::TEXT) {
        return RawCell::ofNumber(deliveredNumber(std::string(cell.text()), kind).value_or(0));
    }
    return RawCell::ofText(cell.isNull() ? "n/a" : std::string(cell.text()));
}

}  // namespace

ColumnPositions positionsOf(const TableModel& model, const std::vector<std::string>& fileColumns)
{
    ColumnPositions positions;
    for (const TableModel::Column& column : model.columns) {
        const auto found = std::find(fileColumns.begin(), fileColumns.end(), column.name);
        positions.push_back(found == fileColumns.end()
                                ? std::nullopt
                                : std::optional(static_cast<int>(found - fileColumns.begin())));
    }
    return positions;
}

std::optional<RawCellView> TableRow::cell(std::size_t column) const
{
    const std::optional<int> position = m_positions[column];
    return position ? std::optional(m_row.cell(*position)) : std::nullopt;
}

std::optional<std::uint64_t> TableRow::number(std::size_t column) const
{
    const std::optional<RawCellView> found = cell(column);
    if (!found || found->isNull()) {
        return std::nullopt;
    }
    const FieldKind kind = m_model.columns[column].kind;
    return deliveredNumber(std::string(found->text()), kind).value_or(0);
}

RowRef TableRow::rowRef() const
{
    constexpr std::size_t KEY = 0;
    const std::optional<RawCellView> key = cell(KEY);
    if (!key || key->isNull()) {
        return {"row " + std::to_string(m_number), "", std::nullopt};
    }
    return rowsWith(m_model.keyColumn().name, std::string(key->text()));
}

Finding TableRow::finding(FindingKind kind, const std::string& what) const
{
    Finding found(kind);
    found.table = m_model.name;
    found.row = rowRef();
    found.what = what;
    return found;
}

Finding TableRow::finding(FindingKind kind, std::size_t column, const std::string& what) const
{
    Finding found = finding(kind, what);
    const TableModel::Column& model = m_model.columns[column];
    found.column = model.name;
    if (const std::optional<RawCellView> stored = cell(column)) {
        found.value = RawCell(*stored);
        found.delivered = deliveredCell(*stored, model.kind);
    }
    return found;
}

RowRef rowsWith(const std::string& column, const std::string& value)
{
    const std::string literal = isInteger(value) ? value : "'" + doubledQuotes(value) + "'";
    return {column + "=" + literal, column, wholeNumber(value)};
}

std::optional<std::int64_t> wholeNumber(std::string_view text)
{
    std::int64_t number = 0;
    const char* end = text.data() + text.size();
    const auto [read, error] = std::from_chars(text.data(), end, number);
    const bool isWhole = error == std::errc() && read == end && std::to_string(number) == text;
    return isWhole ? std::optional(number) : std::nullopt;
}

bool isInteger(std::string_view text)
{
    const std::size_t sign = text.rfind('-', 0) == 0 ? 1 : 0;
    return text.size() > sign &&
           text.find_first_not_of("0123456789", sign) == std::string_view::npos;
}
