#pragma once

#include <string>

/// Makes a database file of fault definitions to read: `faultTypes` fault types with the codes 1 to
/// `faultTypes`, and texts in five languages for each, about as long as those of db/sample.sql.
///
/// The tables are those of db/schema.sql, but for two things. Ids and codes in "descriptions" wrap
/// around at 16 bits, so that on the largest file too every number fits its record. And there is
/// the index on "id_fault_type" only if it is asked for: a lookup without it scans the table.
void makeFaultDatabase(const std::string& file, int faultTypes, bool indexed);

/// A code in the middle of such a file: five texts belong to it, whatever the file's size.
int codeToLookUp(int faultTypes);
