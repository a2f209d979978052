#include <fmt/format.h>

#include <nlohmann/json.hpp>

#include "formats.h"
#include "text/Utf8.h"

namespace {

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
    constexpr int INDENT = 2;
    constexpr bool ASCII_ONLY = false;
    return escapeControls(value.dump(INDENT, ' ', ASCII_ONLY,
                                     nlohmann::ordered_json::error_handler_t::replace)) +
           '\n';
}
