#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>
#include <vector>

#include "Table.h"
#include "Terminal.h"

/// One routine per way in which a table can be written; each returns whole lines.

/// In columns under a header, wrapped to the terminal's width; as renderRecords() where that would
/// leave too little room for the texts.
std::string renderTable(const Table& table, const Terminal& terminal);

/// Each row as a block of its own, with one line for each column.
std::string renderRecords(const Table& table, const Terminal& terminal);

/// @return an array of one object per row.
nlohmann::ordered_json toJson(const Table& table);

/// Indented, the letters of all languages as they are, control characters escaped, and bytes that
/// are no UTF-8 replaced.
std::string renderJson(const nlohmann::ordered_json& value);

/// The same without a line end, as it stands inside of so many objects and arrays.
std::string jsonText(const nlohmann::ordered_json& value, std::size_t depth);

/// @return a line end with the indentation inside of so many objects and arrays.
std::string jsonLineEnd(std::size_t depth);

/// By RFC 4180, with a header. Bytes stay as they are, but for a terminal.
std::string renderCsv(const Table& table, const Terminal& terminal);

/// One line of it.
std::string renderCsvLine(const std::vector<std::string>& fields, const Terminal& terminal);
