#pragma once

#include "Finding.h"
#include "database/RawDatabase.h"
#include "database/TableModel.h"

/// Finds the cells of a table that the library delivers as something else, or that break what is
/// made of them.
void checkValues(const RawDatabase& database, const TableModel& model, const RawTable& table,
                 Findings& findings);
