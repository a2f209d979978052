#include <fmt/format.h>

#include <algorithm>
#include <nlohmann/json.hpp>

#include "formats.h"
#include "text/Utf8.h"

namespace {

constexpr std::size_t INDENT = 2;

/// JSON asks only for the escape of the ASCII control characters below 0x20.
std::string escapeControls(std::string_view json)
{
    std::string escaped;
    while (!json.empty()) {
        const utf8::Character character = utf8::first(json);
        if (utf8::isControl(character.codePoint) && character.codePoint != U'\n') {
            escaped += fmt::format("\\u{:04x}", static_cast<unsigned>(character.codePoint));
        } else {
            escaped += json.substr(0, character.length);
        }
        json.remove_prefix(character.length);
    }
    return escaped;
}

}  // namespace

nlohmann::ordered_json toJson(const Table& table)
{
    auto array = nlohmann::ordered_json::array();
    for (const Table::Row& row : table.rows) {
        auto object = nlohmann::ordered_json::object();
        for (std::size_t i = 0; i < row.size(); ++i) {
            std::visit([&](const auto& value) { object[table.columns[i].name] = value; }, row[i]);
        }
        array.push_back(std::move(object));
    }
    return array;
}

std::string renderJson(const nlohmann::ordered_json& value)
{
    return jsonText(value, 0) + '\n';
}

std::string jsonText(const nlohmann::ordered_json& value, std::size_t depth)
{
    constexpr bool ASCII_ONLY = false;
    const std::string text =
        escapeControls(value.dump(static_cast<int>(INDENT), ' ', ASCII_ONLY,
                                  nlohmann::ordered_json::error_handler_t::replace));
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
