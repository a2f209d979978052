#pragma once

#include <CLI/CLI.hpp>
#include <charconv>
#include <limits>
#include <set>
#include <string>
#include <utility>
#include <vector>
#include "text/formatted.h"

/// Options and positionals that take a number, or one of several words.

/// The whole text as a decimal number, without sign or blanks.
template <class Number>
Number numberFrom(const std::string& text, const std::string& option)
{
    Number number = 0;
    const char* end = text.data() + text.size();
    const auto [read, error] = std::from_chars(text.data(), end, number);
    if (error != std::errc() || read != end) {
        throw CLI::ValidationError(option, formatted(R"("{}" is no number from {} to {})", text,
                                                     std::numeric_limits<Number>::min(),
                                                     std::numeric_limits<Number>::max()));
    }
    return number;
}

template <class Number, class Target>
CLI::Option* addNumber(CLI::App& app, const std::string& option, Target& target,
                       const std::string& description)
{
    const auto store = [&target, option](const std::string& text) {
        target = numberFrom<Number>(text, option);
    };
    return app.add_option_function<std::string>(option, store, description);
}

/// An option that may be repeated, each time with one number.
template <class Number>
CLI::Option* addNumbers(CLI::App& app, const std::string& option, std::set<Number>& target,
                        const std::string& description)
{
    const auto store = [&target, option](const std::vector<std::string>& texts) {
        for (const std::string& text : texts) {
            target.insert(numberFrom<Number>(text, option));
        }
    };
    return app.add_option_function<std::vector<std::string>>(option, store, description)
        ->allow_extra_args(false);
}

template <class Value>
using Choices = std::vector<std::pair<std::string, Value>>;

template <class Value>
std::string namesOf(const Choices<Value>& choices)
{
    std::string names;
    for (const auto& [name, value] : choices) {
        names += (names.empty() ? "" : "|") + name;
    }
    return names;
}

template <class Value>
Value valueNamed(const Choices<Value>& choices, const std::string& text, const std::string& option)
{
    for (const auto& [name, value] : choices) {
        if (name == text) {
            return value;
        }
    }
    throw CLI::ValidationError(option, formatted(R"("{}" is none of {})", text, namesOf(choices)));
}

template <class Value>
CLI::Option* addChoice(CLI::App& app, const std::string& option, Value& target,
                       const Choices<Value>& choices, const std::string& description)
{
    const auto store = [&target, choices, option](const std::string& text) {
        target = valueNamed(choices, text, option);
    };
    return app.add_option_function<std::string>(option, store, description)
        ->type_name(namesOf(choices));
}

/// A file or folder, or several, that have to be named: what a script leaves empty is a mistake.
template <class Target>
CLI::Option* addFile(CLI::App& app, const std::string& name, Target& target,
                     const std::string& description)
{
    const auto refuseEmpty = [](const std::string& file) {
        return std::string(file.empty() ? "is empty" : "");
    };
    return app.add_option(name, target, description)
        ->required()
        ->type_name("")
        ->check(refuseEmpty, "");
}
