#pragma once

#include "RowCheck.h"

/// Finds the cells that the library delivers as something else, or that break what is made of them.
class CellCheck : public RowCheck {
public:
    CellCheck(const TableModel& model, const FindingSink& sink);

    void read(const TableRow& row) override;

private:
    void checkNull(const TableRow& row, std::size_t column) const;
    void checkNumber(const TableRow& row, std::size_t column, const RawCellView& cell) const;
    void checkText(const TableRow& row, std::size_t column, const RawCellView& cell) const;
    void checkBytes(const TableRow& row, std::size_t column, const RawCellView& cell) const;
    bool isBeyondLookup(std::size_t column, std::uint64_t number) const;
    bool isShownFirst(std::size_t column) const;

    const TableModel& m_model;
    const FindingSink& m_sink;
    const std::string m_name;
    const std::string m_description;
};
