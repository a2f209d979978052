#include "ContentHash.h"

#include <algorithm>

#include "Sha256.h"
#include "text/SqlText.h"
#include "text/formatted.h"

namespace {

char letterOf(CellType type)
{
    switch (type) {
    case CellType::INTEGER:
        return 'i';
    case CellType::REAL:
        return 'r';
    case CellType::TEXT:
        return 't';
    case CellType::BLOB:
        return 'b';
    default:
        return 'n';
    }
}

/// With its length in front, so that no two rows of different values are the same bytes.
void addValue(Sha256& hash, CellType type, std::string_view bytes)
{
    hash.add(formatted("{}{}:", letterOf(type), bytes.size()));
    hash.add(bytes);
}

}  // namespace

void ContentHash::add(const TableModel& table, const RawRow& row)
{
    Sha256 hash;
    addValue(hash, CellType::TEXT, table.name);
    for (int i = 0; i < row.columnCount(); ++i) {
        const RawCellView cell = row.cell(i);
        addValue(hash, cell.type, cell.bytes);
    }
    m_rows.push_back(hash.digest());
}

std::string ContentHash::text()
{
    std::sort(m_rows.begin(), m_rows.end());
    Sha256 hash;
    for (const std::string& row : m_rows) {
        hash.add(row);
    }
    return hexadecimal(hash.digest());
}
