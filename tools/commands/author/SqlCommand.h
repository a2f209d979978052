#pragma once

#include "commands/ExitStatus.h"
#include "database/Database.h"
#include "output/Output.h"

enum class Statement { INSERT, UPDATE };
enum class TableChoice { FAULT_TYPE_DEFINITION, DESCRIPTIONS, ALL };

/// zav sql: the statement of every row, as a script that makes or updates the tables.
ExitStatus runSql(Database& database, Statement statement, TableChoice choice, Output& output);
