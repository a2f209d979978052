#pragma once

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

/// What a command prints, before it has a format.
struct Table {
    enum class Kind { NUMBER, TEXT };

    struct Column {
        std::string name;
        Kind kind;
    };

    using Cell = std::variant<std::uint64_t, std::string>;
    using Row = std::vector<Cell>;  ///< one cell per column

    std::vector<Column> columns;
    std::vector<Row> rows;
};

/// @return the cell as it stands; a number in decimal.
inline std::string cellText(const Table::Cell& cell)
{
    const auto* number = std::get_if<std::uint64_t>(&cell);
    return number != nullptr ? std::to_string(*number) : std::get<std::string>(cell);
}
