#include "ContentHash.h"

#include <algorithm>

#include "Sha256.h"
#include "text/SqlText.h"

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
void addValue(std::string& values, CellType type, std::string_view bytes)
{
    values += letterOf(type);
    values += std::to_string(bytes.size());
    values += ':';
    values += bytes;
}

}  // namespace

void ContentHash::add(const TableModel& table, const RawRow& row)
{
    m_values.clear();
    addValue(m_values, CellType::TEXT, table.name);
    for (int i = 0; i < row.columnCount(); ++i) {
        const RawCellView cell = row.cell(i);
        addValue(m_values, cell.type, cell.bytes);
    }
    Sha256 hash;
    hash.add(m_values);
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
