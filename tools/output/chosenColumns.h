#pragma once

#include <string>
#include <vector>

#include "Table.h"

/// @param names  of columns; those that the table lacks are skipped. Empty: all.
/// @return the table with these columns, in their order.
TableView chosenColumns(const TableView& table, const std::vector<std::string>& names);
