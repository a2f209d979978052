#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "check/tables/RowCheck.h"

/// Finds types of fault that look like a misspelt other one.
class TypeCheck : public RowCheck {
public:
    TypeCheck(const TableModel& faultTypes, const FindingSink& sink);

    void read(const TableRow& row) override;
    bool finish() override;
    void readAgain(const TableRow& row) override;

private:
    const FindingSink& m_sink;
    const std::size_t m_column;
    std::map<std::string, std::size_t, std::less<>> m_counts;         ///< by type
    std::map<std::string, std::string, std::less<>> m_nearestCommon;  ///< by rare type
};
