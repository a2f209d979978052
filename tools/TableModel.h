#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "zav/ZavSqlDescriptionsTbl.h"
#include "zav/ZavSqlFaultTypeDefTbl.h"

/// What the library expects of a table, taken from its own table definitions, and what hangs on it.
struct TableModel {
    struct Column {
        std::string name;
        std::string sqlType;
        unsigned bits;  ///< width of the field that takes the number; 0 for a text
        bool isKey;
    };

    std::string name;
    std::vector<Column> columns;
    std::string lookup;          ///< the operation that filters by a column of the table
    std::string comparison;      ///< by which it does that
    std::size_t filterPosition;  ///< of the column, in the order of the file once that is known

    const Column& filterColumn() const { return columns[filterPosition]; }

    /// @throws std::out_of_range if there is none.
    const Column& column(const std::string& columnName) const;
};

TableModel faultTypeModel();
TableModel descriptionsModel();
