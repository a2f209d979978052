#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "FieldKind.h"

/// What the library expects of a table, taken from its own table definitions, and what hangs on it.
struct TableModel {
    struct Column {
        std::string name;
        std::string sqlType;
        FieldKind kind;
        bool isKey;
    };

    std::string name;
    std::vector<Column> columns;
    std::string lookup;          ///< the operation that filters by a column of the table
    std::string comparison;      ///< by which it does that
    std::size_t filterPosition;  ///< of the column, in the order of the file once that is known

    const Column& keyColumn() const { return columns.front(); }
    const Column& filterColumn() const { return columns[filterPosition]; }

    std::vector<std::string> columnNames() const;

    /// @param columnName  of one of the columns.
    /// @return its position.
    std::size_t positionOf(const std::string& columnName) const;

    /// @return the query of the lookup.
    std::string lookupOf(const std::string& value) const
    {
        return lookupBy(filterColumn().name, value);
    }

    /// @return the same once the file's order has put another column in the filter's place.
    std::string lookupBy(const std::string& columnName, const std::string& value) const;
};

TableModel faultTypeModel();
TableModel descriptionsModel();

/// The names of the columns that mean something to more than the library's decoding.
struct FaultTypeColumns {
    std::string code;
    std::string alias;
    std::string type;
};
struct DescriptionsColumns {
    std::string faultType;
    std::string language;
    std::string name;
    std::string shortDescription;
    std::string description;
};

FaultTypeColumns faultTypeColumns();
DescriptionsColumns descriptionsColumns();
