#pragma once

#include <vector>

#include "database/TableModel.h"

/// @return the columns that say something, in the order of the model: all but a key that is a
/// number
///         that the database gave the row.
std::vector<TableModel::Column> valueColumns(const TableModel& table);

/// @return the query of these columns, in their order.
std::string valueQuery(const TableModel& table);
