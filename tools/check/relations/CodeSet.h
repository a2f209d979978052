#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "check/tables/RowCheck.h"
#include "database/FieldKind.h"

/// The codes of the fault types that a text can be of, by the number that the library delivers.
class CodeSet : public RowCheck {
public:
    explicit CodeSet(const TableModel& faultTypes);

    void read(const TableRow& row) override;
    bool finish() override;

    bool contains(std::uint64_t code) const
    {
        return code < m_isCode.size() && m_isCode[static_cast<std::size_t>(code)];
    }

    /// @return all of them, in order; once the table has been read.
    const std::vector<std::uint16_t>& sorted() const { return m_sorted; }

private:
    const std::size_t m_column;
    std::vector<bool> m_isCode;
    std::vector<std::uint16_t> m_sorted;
};
