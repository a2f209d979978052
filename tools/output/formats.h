#pragma once

#include <nlohmann/json_fwd.hpp>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "Table.h"
#include "Terminal.h"

/// One routine per way in which a table can be written: whole lines, row by row.

/// In columns under a header, wrapped to the terminal's width; as writeRecords() where that would
/// leave too little room for the texts, or break words. In files and pipes texts are not wrapped,
/// and a long one pushes aside what follows it, rather than all rows being as wide as the widest.
void writeTable(const TableView& table, const Terminal& terminal, std::ostream& stream);

/// Each row as a block of its own, with one line for each column.
void writeRecords(const TableView& table, const Terminal& terminal, std::ostream& stream);

/// An array of one object per row.
void writeJson(const TableView& table, std::ostream& stream);

/// @return the same as a value.
nlohmann::ordered_json toJson(const Table& table);

/// @return a stored value, by its type.
nlohmann::ordered_json toJson(const RawCellView& cell);

/// Indented, the letters of all languages as they are, control and invisible characters escaped,
/// and bytes that are no UTF-8 replaced.
std::string renderJson(const nlohmann::ordered_json& value);

/// The same without a line end, as it stands inside of so many objects and arrays.
std::string jsonText(const nlohmann::ordered_json& value, std::size_t depth);

/// @return a line end with the indentation inside of so many objects and arrays.
std::string jsonLineEnd(std::size_t depth);

/// By RFC 4180, with a header. Bytes stay as they are, but for a terminal.
void writeCsv(const TableView& table, const Terminal& terminal, std::ostream& stream);

/// One line of it.
std::string renderCsvLine(const std::vector<std::string>& fields, const Terminal& terminal);
