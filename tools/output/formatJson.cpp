
#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <nlohmann/json.hpp>

#include "RowBlock.h"
#include "formats.h"
#include "text/Utf8.h"
#include "text/formatted.h"

namespace {

constexpr std::size_t INDENT = 2;

std::string jsonEscape(char32_t codePoint)
{
    const auto number = static_cast<unsigned>(codePoint);
    if (number < 0x10000) {
        return formatted("\\u{:04x}", number);
    }
    const unsigned offset = number - 0x10000;
    return formatted("\\u{:04x}\\u{:04x}", 0xD800U + (offset >> 10U), 0xDC00U + (offset & 0x3FFU));
}

/// JSON asks only for the escape of the ASCII control characters below 0x20.
std::string escapeControls(std::string_view json)
{
    std::string escaped;
    while (!json.empty()) {
        const std::size_t plain = utf8::plainLength(json);
        escaped += json.substr(0, plain);
        json.remove_prefix(plain);
        if (json.empty()) {
            break;
        }
        const utf8::Character character = utf8::first(json);
        if (utf8::isHazard(character.codePoint) && character.codePoint != U'\n') {
            escaped += jsonEscape(character.codePoint);
        } else {
            escaped += json.substr(0, character.length);
        }
        json.remove_prefix(character.length);
    }
    return escaped;
}

std::string dumpJson(const nlohmann::ordered_json& value)
{
    constexpr bool ASCII_ONLY = false;
    return escapeControls(value.dump(static_cast<int>(INDENT), ' ', ASCII_ONLY,
                                     nlohmann::ordered_json::error_handler_t::replace));
}

/// @return whether a text is in quotes what it is in JSON.
bool isPlain(std::string_view text)
{
    if (text.find('"') != std::string_view::npos || text.find('\\') != std::string_view::npos) {
        return false;
    }
    for (;;) {
        text.remove_prefix(utf8::harmlessLength(text));
        if (text.empty()) {
            return true;
        }
        const utf8::Character character = utf8::first(text);
        if (!character.valid || utf8::isHazard(character.codePoint)) {
            return false;
        }
        text.remove_prefix(character.length);
    }
}

/// Of texts of a list nearly all are plain, and what the library does for the others takes most of
/// the time.
void appendString(std::string_view text, std::string& json)
{
    if (isPlain(text)) {
        json += '"';
        json += text;
        json += '"';
    } else {
        json += dumpJson(text);
    }
}

void appendValue(const TableView::Cell& cell, std::string& json)
{
    if (const auto* text = std::get_if<std::string_view>(&cell)) {
        appendString(*text, json);
    } else if (const auto* stored = std::get_if<RawCellView>(&cell)) {
        json += dumpJson(toJson(*stored));
    } else {
        json += std::to_string(std::get<std::uint64_t>(cell));
    }
}

/// A number beyond all others is none in JSON.
nlohmann::ordered_json realNumber(std::string_view bytes)
{
    const double number = std::strtod(std::string(bytes).c_str(), nullptr);
    return std::isfinite(number) ? nlohmann::ordered_json(number) : nlohmann::ordered_json(bytes);
}

nlohmann::ordered_json toJson(const Table::Cell& cell)
{
    if (const auto* stored = std::get_if<RawCell>(&cell)) {
        return toJson(RawCellView{stored->type, stored->bytes});
    }
    const auto* number = std::get_if<std::uint64_t>(&cell);
    return number != nullptr ? nlohmann::ordered_json(*number)
                             : nlohmann::ordered_json(std::get<std::string>(cell));
}

/// What stands in front of the value of each column.
std::vector<std::string> keysOf(const TableView& table)
{
    std::vector<std::string> keys;
    for (const Table::Column& column : table.columns) {
        keys.push_back((keys.empty() ? "" : ",") + jsonLineEnd(2) + dumpJson(column.name) + ": ");
    }
    return keys;
}

}  // namespace

void writeJson(const TableView& table, std::ostream& stream)
{
    const std::vector<std::string> keys = keysOf(table);
    const std::string objectStart = jsonLineEnd(1) + '{';
    const std::string objectEnd = jsonLineEnd(1) + '}';
    RowBlock block(stream);
    std::string& json = block.text();
    const char* separator = "[";
    table.forEachRow([&](const TableView::Row& row) {
        json += separator;
        json += objectStart;
        for (std::size_t i = 0; i < row.size(); ++i) {
            json += keys[i];
            appendValue(row[i], json);
        }
        json += objectEnd;
        separator = ",";
        block.endRow();
    });
    json += *separator == '[' ? "[]\n" : "\n]\n";
}

nlohmann::ordered_json toJson(const Table& table)
{
    auto array = nlohmann::ordered_json::array();
    for (const Table::Row& row : table.rows) {
        auto object = nlohmann::ordered_json::object();
        for (std::size_t i = 0; i < row.size(); ++i) {
            object[table.columns[i].name] = toJson(row[i]);
        }
        array.push_back(std::move(object));
    }
    return array;
}

nlohmann::ordered_json toJson(const RawCellView& cell)
{
    switch (cell.type) {
    case CellType::NONE:
        return {};
    case CellType::INTEGER:
        return std::stoll(std::string(cell.bytes));
    case CellType::REAL:
        return realNumber(cell.bytes);
    default:
        return cell.bytes;
    }
}

std::string renderJson(const nlohmann::ordered_json& value)
{
    return jsonText(value, 0) + '\n';
}

std::string jsonText(const nlohmann::ordered_json& value, std::size_t depth)
{
    const std::string text = dumpJson(value);
    std::string indented;
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t end = std::min(text.find('\n', start), text.size());
        indented += (start == 0 ? "" : jsonLineEnd(depth)) + text.substr(start, end - start);
        start = end + 1;
    }
    return indented;
}

std::string jsonLineEnd(std::size_t depth)
{
    return '\n' + std::string(INDENT * depth, ' ');
}
