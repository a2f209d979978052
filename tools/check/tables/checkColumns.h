#pragma once

#include <string>
#include <vector>

#include "check/Finding.h"
#include "database/RawDatabase.h"
#include "database/TableModel.h"

/// Finds columns that are missing, written with other letters, unknown, or in another order.
///
/// @param names  of the columns in the file, in their order.
void checkColumns(const RawDatabase& database, const TableModel& model,
                  const std::vector<std::string>& names, const FindingSink& sink);
