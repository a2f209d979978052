#pragma once

#include <string>

#include "Table.h"
#include "database/RawDatabase.h"
#include "database/TableModel.h"

/// @param condition  in SQL, of the rows that are wanted; empty: all.
/// @return the rows as the file holds them, which has to be open as long as the view. The view
///         throws FailedQuery.
TableView viewOfStored(const RawDatabase& database, const TableModel& model,
                       const std::string& condition = "");
