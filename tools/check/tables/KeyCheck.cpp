#include "KeyCheck.h"
#include "text/formatted.h"

#include <algorithm>

void KeyCheck::read(const TableRow& row)
{
    constexpr std::size_t KEY = 0;
    const std::optional<RawCellView> key = row.cell(KEY);
    if (!key || key->isNull()) {
        return;
    }
    const std::optional<std::int64_t> number = wholeNumber(key->text());
    if (number) {
        m_numbers.push_back(*number);
    } else {
        ++m_others[std::string(key->text())];
    }
}

bool KeyCheck::finish()
{
    std::sort(m_numbers.begin(), m_numbers.end());
    for (auto first = m_numbers.begin(); first != m_numbers.end();) {
        const auto next = std::upper_bound(first, m_numbers.end(), *first);
        report({CellType::INTEGER, std::to_string(*first)}, static_cast<std::size_t>(next - first));
        first = next;
    }
    for (const auto& [text, count] : m_others) {
        report(RawCell::ofText(text), count);
    }
    return false;
}

void KeyCheck::report(const RawCell& value, std::size_t count) const
{
    if (count < 2) {
        return;
    }
    const TableModel::Column& key = m_model.keyColumn();
    const bool isFilter = key.name == m_model.filterColumn().name;
    Finding found(isFilter ? FindingKind::DUPLICATE_CODE : FindingKind::DUPLICATE_ID);
    found.table = m_model.name;
    found.row = rowsWith(key.name, value.bytes);
    found.column = key.name;
    found.value = value;
    found.what = formatted("{} rows have it{}; keep one, and declare {} as {}", count,
                           isFilter ? ", and " + m_model.lookup + " finds none of them" : "",
                           key.name, key.sqlType);
    m_sink(found);
}
