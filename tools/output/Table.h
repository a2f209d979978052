#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "database/RawCell.h"

/// What a command prints, before it has a format.
struct Table {
    enum class Kind { NUMBER, TEXT };

    struct Column {
        std::string name;
        Kind kind;
    };

    using Cell = std::variant<std::uint64_t, std::string, RawCell>;
    using Row = std::vector<Cell>;  ///< one cell per column

    std::vector<Column> columns;
    std::vector<Row> rows;
};

/// A table whose rows are made one at a time, as they are written: a list may be as long as the
/// memory allows.
struct TableView {
    using Cell = std::variant<std::uint64_t, std::string_view, RawCellView>;
    using Row = std::vector<Cell>;
    using TakeRow = std::function<void(const Row&)>;

    std::vector<Table::Column> columns;

    /// Calls its argument with each row in turn; the row holds until the next. May be called again.
    std::function<void(const TakeRow&)> forEachRow;
};

/// @return a view of a table that lives longer.
TableView viewOf(const Table& table);

/// @return the table with all its rows.
Table tableOf(const TableView& view);

/// @return a view of a cell that lives longer.
TableView::Cell viewOf(const Table::Cell& cell);

/// @return the cell, kept.
Table::Cell ownedCell(const TableView::Cell& cell);

/// @return the cell as it stands; a number in decimal, and NULL by that word.
std::string cellText(const TableView::Cell& cell);

/// @return whether the cell is NULL, and no text that looks like it.
bool isNull(const TableView::Cell& cell);
