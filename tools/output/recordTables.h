#pragma once

#include <vector>

#include "Table.h"
#include "zav/Descriptions.h"
#include "zav/FaultTypeDef.h"

/// The library's records as tables: one row per record, the columns named as in the database.

Table tableOf(const std::vector<FaultTypeDef>& records);
Table tableOf(const std::vector<Descriptions>& records);
