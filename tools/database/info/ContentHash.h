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
    /// @param row  of the table, the columns of valueColumns() in their order.
    void add(const TableModel& table, const RawRow& row);

    /// @return 64 hexadecimal digits; to be called once, last.
    std::string text();

    /// @return the columns that count.
    static std::vector<std::string> valueColumns(const TableModel& table);

private:
    std::vector<std::string> m_rows;  ///< the digest of each
};
