#pragma once

#include <string>

#include "zav/Descriptions.h"
#include "zav/SqlTbl.h"
#include "zav/export.h"

extern template class SqlTbl<Descriptions>;

/// The table "descriptions": its columns, bound to the fields of a Descriptions.
class ZAV_EXPORT ZavSqlDescriptionsTbl : public SqlTbl<Descriptions> {
public:
    /// @param name  the table's name as it stands in the statement texts; the column list does not
    ///              depend on it.
    explicit ZavSqlDescriptionsTbl(const std::string& name);

    /// Fills `columns` with the table's full list unless it holds columns already.
    ///
    /// @param name  ignored: the table's name comes from the constructor alone.
    void init(const std::string& name) override;
};
