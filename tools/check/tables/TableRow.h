#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "check/Finding.h"
#include "database/RawDatabase.h"
#include "database/TableModel.h"

/// Where the columns of the model stand in the file; each is looked for by exactly its name, as the
/// library does.
using ColumnPositions = std::vector<std::optional<int>>;

ColumnPositions positionsOf(const TableModel& model, const std::vector<std::string>& fileColumns);

/// A row that is being checked, by the columns of the model.
class TableRow {
public:
    /// @param number   counted from 1 in the order in which the library delivers the rows.
    /// @param isFound  whether the lookup of what the library delivers in the filter column finds
    ///                 the row.
    TableRow(const TableModel& model, const ColumnPositions& positions, const RawRow& row,
             std::size_t number, bool isFound)
        : m_model(model), m_positions(positions), m_row(row), m_number(number), m_isFound(isFound)
    {
    }

    std::size_t number() const { return m_number; }
    bool isFound() const { return m_isFound; }

    /// @param column  position in the model.
    /// @return nothing if the file lacks the column.
    std::optional<RawCellView> cell(std::size_t column) const;

    /// @return the number that the library delivers; nothing for NULL, which has a finding of its
    ///         own, or where the file lacks the column.
    std::optional<std::uint64_t> number(std::size_t column) const;

    RowRef rowRef() const;

    /// @return a finding about the row.
    Finding finding(FindingKind kind, const std::string& what) const;

    /// @return a finding about a cell of the row, which delivers the text of the file unchanged
    ///         unless it says otherwise.
    Finding finding(FindingKind kind, std::size_t column, const std::string& what) const;

private:
    const TableModel& m_model;
    const ColumnPositions& m_positions;
    const RawRow& m_row;
    std::size_t m_number;
    bool m_isFound;
};

/// @return what names the rows in which a column has a value.
RowRef rowsWith(const std::string& column, const std::string& value);

/// @return the number that is all of the text, in its shortest form; nothing if there is none.
std::optional<std::int64_t> wholeNumber(std::string_view text);

/// @return whether the text is an integer number, signed or not, and nothing else.
bool isInteger(std::string_view text);
