#include "ownParts.h"

#include <sqlite3.h>

#include <algorithm>

#include "database/TableModel.h"
#include "readingStored.h"
#include "text/formatted.h"

namespace {

bool isSame(std::string_view one, const std::string& other)
{
    return sqlite3_stricmp(std::string(one).c_str(), other.c_str()) == 0;
}

std::string indexName(const TableModel& table)
{
    return table.name + '_' + table.filterColumn().name;
}

bool isOfSchema(std::string_view type, std::string_view name)
{
    const TableModel texts = descriptionsModel();
    const bool isTable = isSame(name, faultTypeModel().name) || isSame(name, texts.name);
    return (type == "table" && isTable) || (type == "index" && isSame(name, indexName(texts)));
}

void addObjects(const RawDatabase& database, std::vector<std::string>& parts)
{
    database.read(
        "SELECT type, name FROM sqlite_master WHERE name NOT LIKE 'sqlite~_%' ESCAPE '~' "
        "ORDER BY type, name",
        [&](const RawRow& row) {
            const std::string_view type = row.cell(0).text();
            const std::string_view name = row.cell(1).text();
            if (!isOfSchema(type, name)) {
                parts.push_back(formatted("the {} {}", type, name));
            }
        });
}

void addColumns(const RawDatabase& database, const TableModel& table,
                std::vector<std::string>& parts)
{
    const auto isKnown = [&](const std::string& name) {
        return std::any_of(
            table.columns.begin(), table.columns.end(),
            [&](const TableModel::Column& column) { return isSame(name, column.name); });
    };
    const auto names = database.columnsOf(table.name);
    for (const std::string& name : names.value_or(std::vector<std::string>())) {
        if (!isKnown(name)) {
            parts.push_back(formatted("the column {} of {}", name, table.name));
        }
    }
}

}  // namespace

std::vector<std::string> ownParts(const Database& database)
{
    return readingStored(database, [](const RawDatabase& raw) {
        std::vector<std::string> parts;
        addObjects(raw, parts);
        addColumns(raw, faultTypeModel(), parts);
        addColumns(raw, descriptionsModel(), parts);
        return parts;
    });
}
