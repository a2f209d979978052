#pragma once

#include "Finding.h"
#include "database/RawDatabase.h"
#include "database/TableModel.h"

/// Finds columns that are missing, written with other letters, unknown, or in another order.
void checkColumns(const RawDatabase& database, const TableModel& model, const RawTable& table,
                  Findings& findings);
