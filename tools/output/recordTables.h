#pragma once

#include <vector>

#include "Table.h"
#include "zav/Descriptions.h"
#include "zav/FaultTypeDef.h"

/// The library's records as tables: one row per record, the columns named as in the database. The
/// records have to live as long as the view.

TableView viewOf(const std::vector<FaultTypeDef>& records);
TableView viewOf(const std::vector<Descriptions>& records);
