#include "TextsCommand.h"

#include <algorithm>
#include <unordered_map>

#include "database/TableModel.h"
#include "database/stored/readingStored.h"
#include "output/chosenColumns.h"
#include "output/recordTables.h"
#include "output/storedTables.h"
#include "text/formatted.h"
#include "text/message.h"

namespace {

/// What people want to know of a fault type beside its code.
struct FaultTypeCells {
    Table::Cell alias;
    Table::Cell type;
};

using FaultTypeCellsByCode = std::unordered_map<std::string, FaultTypeCells>;

FaultTypeCellsByCode faultTypeCells(const TableView& faultTypes)
{
    const FaultTypeColumns names = faultTypeColumns();
    FaultTypeCellsByCode cells;
    const TableView view = chosenColumns(faultTypes, {names.code, names.alias, names.type});
    view.forEachRow([&](const TableView::Row& row) {
        cells.emplace(cellText(row[0]), FaultTypeCells{ownedCell(row[1]), ownedCell(row[2])});
    });
    return cells;
}

std::size_t positionAfterCode()
{
    return descriptionsModel().positionOf(descriptionsColumns().faultType) + 1;
}

/// @return the texts, with alias and type of the fault type behind its code; where there is none,
///         with cells that are empty.
TableView withFaultTypes(const TableView& texts, const FaultTypeCellsByCode& cells,
                         const FaultTypeCells& none)
{
    const auto position = static_cast<std::ptrdiff_t>(positionAfterCode());
    const FaultTypeColumns names = faultTypeColumns();
    TableView table = texts;
    table.columns.insert(table.columns.begin() + position,
                         {{names.alias, Table::Kind::TEXT}, {names.type, Table::Kind::TEXT}});
    table.forEachRow = [forEachRow = texts.forEachRow, &cells, &none,
                        position](const TableView::TakeRow& take) {
        TableView::Row joinedRow;
        forEachRow([&](const TableView::Row& row) {
            const auto found = cells.find(cellText(row[static_cast<std::size_t>(position) - 1]));
            const FaultTypeCells& faultType = found == cells.end() ? none : found->second;
            joinedRow.assign(row.begin(), row.begin() + position);
            joinedRow.push_back(viewOf(faultType.alias));
            joinedRow.push_back(viewOf(faultType.type));
            joinedRow.insert(joinedRow.end(), row.begin() + position, row.end());
            take(joinedRow);
        });
    };
    return table;
}

/// For programs, the columns are those of the table unless others are asked for.
std::vector<std::string> wantedColumns(const TextsRequest& request, Format format)
{
    return request.listing.columns.empty() && format == Format::TABLE ? textsColumns()
                                                                      : request.listing.columns;
}

bool hasFaultTypeColumn(const std::vector<std::string>& names)
{
    const FaultTypeColumns ofFaultType = faultTypeColumns();
    return std::any_of(names.begin(), names.end(), [&](const std::string& name) {
        return name == ofFaultType.alias || name == ofFaultType.type;
    });
}

/// @param faultTypes  asked for only if a column is of them.
template <class FaultTypes>
void print(const TableView& texts, const TextsRequest& request, const FaultTypes& faultTypes,
           const FaultTypeCells& none, Output& output)
{
    const std::vector<std::string> columns = wantedColumns(request, output.format());
    if (hasFaultTypeColumn(columns)) {
        const FaultTypeCellsByCode cells = faultTypes();
        output.print(chosenColumns(withFaultTypes(texts, cells, none), columns));
    } else {
        output.print(chosenColumns(texts, columns));
    }
}

std::vector<Descriptions> deliveredTexts(Database& database, const TextsRequest& request)
{
    std::vector<Descriptions> texts =
        request.codes.empty() ? database.texts() : std::vector<Descriptions>();
    for (const std::uint32_t code : request.codes) {
        const std::vector<Descriptions> ofCode = database.textsOf(code);
        texts.insert(texts.end(), ofCode.begin(), ofCode.end());
    }
    if (!request.languages.empty()) {
        const auto isOther = [&](const Descriptions& text) {
            return request.languages.count(text.id_language) == 0;
        };
        texts.erase(std::remove_if(texts.begin(), texts.end(), isOther), texts.end());
    }
    return texts;
}

/// @return whether there is any.
bool printDelivered(Database& database, const TextsRequest& request, Output& output)
{
    const std::vector<Descriptions> texts = deliveredTexts(database, request);
    const auto faultTypes = [&] {
        const std::vector<FaultTypeDef> records = database.faultTypes();
        return faultTypeCells(viewOf(records));
    };
    print(viewOf(texts), request, faultTypes, {"", ""}, output);
    return !texts.empty();
}

template <class Numbers>
std::string conditionOf(const std::string& column, const Numbers& numbers)
{
    return numbers.empty() ? "1" : formatted(R"("{}" IN ({}))", column, listed(numbers, ","));
}

bool printStored(const Database& database, const TextsRequest& request, Output& output)
{
    return readingStored(database, [&](const RawDatabase& raw) {
        const DescriptionsColumns names = descriptionsColumns();
        const TableView texts = viewOfStored(raw, descriptionsModel(),
                                             conditionOf(names.faultType, request.codes) + " AND " +
                                                 conditionOf(names.language, request.languages));
        const auto faultTypes = [&] { return faultTypeCells(viewOfStored(raw, faultTypeModel())); };
        print(texts, request, faultTypes, {RawCell(), RawCell()}, output);
        bool isAny = false;
        texts.forEachRow([&](const TableView::Row& /*row*/) { isAny = true; });
        return isAny;
    });
}

std::string requestText(const TextsRequest& request)
{
    std::vector<std::string> conditions;
    if (!request.codes.empty()) {
        conditions.push_back(formatted("the code {}", listed(request.codes, " or ")));
    }
    if (!request.languages.empty()) {
        conditions.push_back(formatted("the language {}", listed(request.languages, " or ")));
    }
    return listed(conditions, " and ");
}

}  // namespace

std::vector<std::string> textsColumns()
{
    std::vector<std::string> names = descriptionsModel().columnNames();
    const FaultTypeColumns ofFaultType = faultTypeColumns();
    names.insert(names.begin() + static_cast<std::ptrdiff_t>(positionAfterCode()),
                 {ofFaultType.alias, ofFaultType.type});
    return names;
}

ExitStatus runTexts(Database& database, const TextsRequest& request, Output& output)
{
    const bool isAny = request.listing.isStored ? printStored(database, request, output)
                                                : printDelivered(database, request, output);
    if (isAny || !request.isNarrowed()) {
        return ExitStatus::DONE;
    }
    printMessage(formatted("{}: no text has {}", database.file(), requestText(request)));
    return ExitStatus::NOT_FOUND_OR_FINDINGS;
}
