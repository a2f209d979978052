#pragma once

#include <functional>
#include <string>

#include "database/RawDatabase.h"
#include "database/TableModel.h"

/// Compares what the lookup of a table delivers by an index with what a scan finds.
///
/// @param report  called with each number by which they differ.
/// @throws FailedQuery
void compareLookups(const RawDatabase& database, const TableModel& model,
                    const std::function<void(const std::string&)>& report);
