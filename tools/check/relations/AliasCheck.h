#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "check/tables/RowCheck.h"

/// Finds aliases that an earlier fault type has.
class AliasCheck : public RowCheck {
public:
    AliasCheck(const TableModel& faultTypes, const FindingSink& sink);

    void read(const TableRow& row) override;

private:
    const FindingSink& m_sink;
    const std::size_t m_column;
    std::map<std::string, std::string> m_firstRows;  ///< by alias
};
