#include "TypeCheck.h"

#include "text/editDistance.h"
#include "text/formatted.h"

namespace {

constexpr std::size_t MOST_ROWS_OF_RARE = 2;
constexpr std::size_t LEAST_ROWS_OF_COMMON = 10;
constexpr std::size_t MOST_EDITS = 2;

/// Longer types, or more of them, are no set that was agreed on. Each type is compared with each
/// other, and these limits bound that, too.
constexpr std::size_t LONGEST = 100;
constexpr std::size_t MOST_TYPES = 1000;

}  // namespace

TypeCheck::TypeCheck(const TableModel& faultTypes, const FindingSink& sink)
    : m_sink(sink), m_column(faultTypes.positionOf(faultTypeColumns().type))
{
}

void TypeCheck::read(const TableRow& row)
{
    const std::optional<RawCellView> type = row.cell(m_column);
    if (!type || type->isNull() || type->text().empty() || type->text().size() > LONGEST) {
        return;
    }
    const auto known = m_counts.find(type->text());
    if (known != m_counts.end()) {
        ++known->second;
    } else if (m_counts.size() <= MOST_TYPES) {
        m_counts.emplace(type->text(), 1);
    }
}

bool TypeCheck::finish()
{
    if (m_counts.size() > MOST_TYPES) {
        return false;
    }
    for (const auto& [rare, rows] : m_counts) {
        std::size_t nearest = MOST_EDITS + 1;
        for (const auto& [common, commonRows] : m_counts) {
            if (rows > MOST_ROWS_OF_RARE || commonRows < LEAST_ROWS_OF_COMMON) {
                continue;
            }
            const std::size_t edits = editDistance(rare, common, MOST_EDITS);
            if (edits < nearest) {
                nearest = edits;
                m_nearestCommon[rare] = common;
            }
        }
    }
    return !m_nearestCommon.empty();
}

void TypeCheck::readAgain(const TableRow& row)
{
    const std::optional<RawCellView> type = row.cell(m_column);
    const auto found = type ? m_nearestCommon.find(type->text()) : m_nearestCommon.end();
    if (found != m_nearestCommon.end()) {
        m_sink(row.finding(FindingKind::RARE_TYPE, m_column,
                           formatted(R"({} fault types are "{}"; correct it if that is meant)",
                                     m_counts.find(found->second)->second, found->second)));
    }
}
