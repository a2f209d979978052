#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "RawDatabase.h"
#include "TableModel.h"

/// @return the position of the column of exactly this name, as the library looks for it.
std::optional<std::size_t> positionOf(const std::string& column, const RawTable& table);

/// @return a condition that selects the row by its key, such as code=17; without a key "row 3",
///         counted from 1 in the order in which the library delivers them.
std::string rowLabel(const TableModel& model, const RawTable& table, std::size_t row);

/// @return "column=value", as SQL.
std::string condition(const std::string& column, const std::string& value);

/// @return the beginning of a value, enough to recognise it.
std::string shortened(const std::string& value);

/// @return whether the text is an integer number, signed or not, and nothing else.
bool isInteger(const std::string& text);

/// @return whether names are the same to SQLite, which does not tell a from A.
bool isSameName(const std::string& one, const std::string& other);
