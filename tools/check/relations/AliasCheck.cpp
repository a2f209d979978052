#include "AliasCheck.h"
#include "text/formatted.h"

AliasCheck::AliasCheck(const TableModel& faultTypes, const FindingSink& sink)
    : m_sink(sink), m_column(faultTypes.positionOf(faultTypeColumns().alias))
{
}

void AliasCheck::read(const TableRow& row)
{
    const std::optional<RawCellView> alias = row.cell(m_column);
    if (!alias || alias->isNull() || alias->bytes.empty()) {
        return;
    }
    const auto [first, isNew] = m_firstRows.emplace(alias->bytes, row.rowRef().label);
    if (!isNew) {
        m_sink(row.finding(FindingKind::DUPLICATE_ALIAS, m_column,
                           formatted("the alias of {}, too; give each its own", first->second)));
    }
}
