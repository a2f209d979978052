#pragma once

#include "Finding.h"
#include "database/RawDatabase.h"
#include "database/TableModel.h"

/// Finds values of the key column that several rows share.
void checkKeys(const TableModel& model, const RawTable& table, Findings& findings);

/// Finds out whether the lookup of texts reads the whole table.
void checkIndex(const RawDatabase& database, const TableModel& model, Findings& findings);

/// Finds texts of unknown fault types, several texts for one fault type and language, and fault
/// types that lack a language that others have.
void checkTexts(const RawTable& faultTypes, const RawTable& descriptions, Findings& findings);
