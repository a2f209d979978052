#include "rawRows.h"

#include <sqlite3.h>

#include <algorithm>

#include "text/SqlText.h"
#include "text/Utf8.h"

std::optional<std::size_t> positionOf(const std::string& column, const RawTable& table)
{
    const auto found = std::find(table.columns.begin(), table.columns.end(), column);
    if (found == table.columns.end()) {
        return std::nullopt;
    }
    return static_cast<std::size_t>(found - table.columns.begin());
}

std::string rowLabel(const TableModel& model, const RawTable& table, std::size_t row)
{
    const std::string& key = model.columns.front().name;
    const std::optional<std::size_t> position = positionOf(key, table);
    if (!position || table.rows[row][*position].isNull) {
        return "row " + std::to_string(row + 1);
    }
    return condition(key, table.rows[row][*position].text());
}

std::string condition(const std::string& column, const std::string& value)
{
    return column + "=" + (isInteger(value) ? value : "'" + doubledQuotes(value) + "'");
}

std::string shortened(const std::string& value)
{
    constexpr std::size_t CHARACTERS = 60;
    std::size_t bytes = 0;
    for (std::size_t i = 0; i < CHARACTERS && bytes < value.size(); ++i) {
        bytes += utf8::first(std::string_view(value).substr(bytes)).length;
    }
    return bytes < value.size() ? value.substr(0, bytes) + "..." : value;
}

bool isInteger(const std::string& text)
{
    const std::size_t sign = text.rfind('-', 0) == 0 ? 1 : 0;
    return text.size() > sign && text.find_first_not_of("0123456789", sign) == std::string::npos;
}

bool isSameName(const std::string& one, const std::string& other)
{
    return sqlite3_stricmp(one.c_str(), other.c_str()) == 0;
}
