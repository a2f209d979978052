#include "CodeSet.h"

CodeSet::CodeSet(const TableModel& faultTypes)
    : m_column(faultTypes.positionOf(faultTypeColumns().code)),
      m_isCode(largestNumber(FieldKind::NUMBER_16) + 1)
{
}

void CodeSet::read(const TableRow& row)
{
    const std::optional<std::uint64_t> code = row.number(m_column);
    if (code && *code < m_isCode.size()) {
        m_isCode[static_cast<std::size_t>(*code)] = true;
    }
}

bool CodeSet::finish()
{
    for (std::size_t code = 0; code < m_isCode.size(); ++code) {
        if (m_isCode[code]) {
            m_sorted.push_back(static_cast<std::uint16_t>(code));
        }
    }
    return false;
}
