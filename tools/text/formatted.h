#pragma once

#include <fmt/core.h>

#include <string>

/// @see formatted()
std::string formattedValues(fmt::string_view text, fmt::format_args values);

/// fmt::format(), but compiled once: fmt's own is compiled anew in each file that calls it.
template <typename... Values>
std::string formatted(fmt::format_string<Values...> text, Values&&... values)
{
    return formattedValues(text, fmt::make_format_args(values...));
}

/// @param values  texts or numbers.
/// @return them with the separator between each two.
template <typename Values>
std::string listed(const Values& values, const char* separator)
{
    std::string text;
    const char* between = "";
    for (const auto& value : values) {
        text += formatted("{}{}", between, value);
        between = separator;
    }
    return text;
}
