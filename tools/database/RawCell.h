#pragma once

#include <cstdint>
#include <string>
#include <string_view>

enum class CellType : std::uint8_t { NONE, INTEGER, REAL, TEXT, BLOB };

/// A cell of a file in SQLite's text form, before the library has made anything of it; as long as
/// its row is the current one.
struct RawCellView {
    CellType type;
    std::string_view bytes;  ///< all of them, NUL bytes included

    bool isNull() const { return type == CellType::NONE; }

    /// @return what reaches the library: texts end at their first NUL byte there.
    std::string_view text() const { return bytes.substr(0, bytes.find('\0')); }
};

/// A cell that is kept.
struct RawCell {
    CellType type = CellType::NONE;
    std::string bytes;

    RawCell() = default;
    RawCell(CellType cellType, std::string cellBytes) : type(cellType), bytes(std::move(cellBytes))
    {
    }
    explicit RawCell(const RawCellView& view) : type(view.type), bytes(view.bytes) {}

    static RawCell ofNumber(std::uint64_t number)
    {
        return {CellType::INTEGER, std::to_string(number)};
    }
    static RawCell ofText(std::string text) { return {CellType::TEXT, std::move(text)}; }

    bool isNull() const { return type == CellType::NONE; }
};
