#pragma once

#include <string>

#include "zav/FaultTypeDef.h"
#include "zav/SqlTbl.h"
#include "zav/export.h"

extern template class SqlTbl<FaultTypeDef>;

/// The table "fault_type_definition": its columns, bound to the fields of a FaultTypeDef.
class ZAV_EXPORT ZavSqlFaultTypeDefTbl : public SqlTbl<FaultTypeDef> {
public:
    /// @param name  the table's name as it stands in the statement texts; the column list does not
    ///              depend on it.
    explicit ZavSqlFaultTypeDefTbl(const std::string& name);

    /// Fills `columns` with the table's full list unless it holds columns already.
    ///
    /// @param name  ignored: the table's name comes from the constructor alone.
    void init(const std::string& name) override;
};
