#pragma once

#include <string>
#include <vector>

#include "database/RawDatabase.h"
#include "database/TableModel.h"

/// What stands in a database, as one number: the stored values by table and column, whatever the
/// order of rows, the page layout and the keys that nobody chose. docs/database.md tells how it is
/// made; it must stay what it is for ever.
class ContentHash {
public:
    /// @param row  of the table, as valueQuery() selects it.
    void add(const TableModel& table, const RawRow& row);

    /// @return 64 hexadecimal digits; to be called once, last.
    std::string text();

private:
    std::vector<std::string> m_rows;  ///< the digest of each
    std::string m_values;             ///< of the row that is added
};
