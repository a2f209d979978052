#include "StoredFile.h"

#include <algorithm>
#include <utility>

#include "readingStored.h"
#include "text/formatted.h"
#include "valueColumns.h"

namespace {

std::vector<StoredRow> readTable(const RawDatabase& database, const TableModel& table)
{
    std::string order;
    for (std::size_t i = 1; i <= valueColumns(table).size(); ++i) {
        order += formatted("{}{}", order.empty() ? " ORDER BY " : ", ", i);
    }
    std::vector<StoredRow> rows;
    database.read(valueQuery(table) + order, [&](const RawRow& row) {
        StoredRow cells;
        for (int i = 0; i < row.columnCount(); ++i) {
            cells.emplace_back(row.cell(i));
        }
        rows.push_back(std::move(cells));
    });
    return rows;
}

}  // namespace

StoredFile readStored(const Database& database)
{
    return readingStored(database, [](const RawDatabase& raw) {
        return StoredFile{readTable(raw, faultTypeModel()), readTable(raw, descriptionsModel())};
    });
}

bool isInOneOf(const std::set<std::uint16_t>& languages, const StoredRow& text)
{
    return languages.empty() ||
           std::any_of(languages.begin(), languages.end(), [&](std::uint16_t language) {
               return std::to_string(language) == text[StoredFile::LANGUAGE].bytes;
           });
}

bool hasTextIn(std::uint16_t language, const StoredFile& content)
{
    return std::any_of(content.texts.begin(), content.texts.end(),
                       [&](const StoredRow& text) { return isInOneOf({language}, text); });
}
