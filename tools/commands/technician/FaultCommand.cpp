#include "FaultCommand.h"

#include <algorithm>
#include <iterator>
#include <nlohmann/json.hpp>
#include <optional>

#include "database/stored/readingStored.h"
#include "nearestAlias.h"
#include "output/chosenColumns.h"
#include "output/formats.h"
#include "output/recordTables.h"
#include "output/storedTables.h"
#include "text/formatted.h"
#include "text/lowerCase.h"
#include "text/message.h"

namespace {

void printRecords(const Table& fault, const Table& texts, Output& output)
{
    output.printRecords(fault);
    if (!texts.rows.empty() && !texts.columns.empty()) {
        output.printText(fault.columns.empty() ? "" : "\n");
        output.printRecords(texts);
    }
}

void printJson(const Table& fault, const Table& texts, Output& output)
{
    nlohmann::ordered_json object = toJson(fault).front();
    if (!texts.columns.empty()) {
        object["texts"] = toJson(texts);
    }
    output.printJson(object);
}

/// One row per text, each beginning with the fault type; a fault type without texts has one row all
/// the same.
Table joinTables(const Table& fault, const Table& texts)
{
    Table table = fault;
    table.columns.insert(table.columns.end(), texts.columns.begin(), texts.columns.end());
    table.rows.clear();
    std::vector<Table::Row> textRows = texts.rows;
    if (textRows.empty()) {
        textRows.emplace_back(texts.columns.size(), "");
    }
    for (const Table::Row& text : textRows) {
        Table::Row row = fault.rows.front();
        row.insert(row.end(), text.begin(), text.end());
        table.rows.push_back(row);
    }
    return table;
}

/// The columns of both, in the order that is wanted.
Table chosenOfBoth(const Table& fault, const Table& texts, const FaultRequest& request)
{
    const Table both = joinTables(fault, texts);
    return tableOf(chosenColumns(viewOf(both), request.listing.columns));
}

void print(const TableView& faultView, const TableView& textsView, const FaultRequest& request,
           Output& output)
{
    const Table fault = tableOf(chosenColumns(faultView, request.listing.columns));
    const Table texts = tableOf(chosenColumns(textsView, request.listing.columns));
    switch (output.format()) {
    case Format::TABLE:
        printRecords(fault, texts, output);
        break;
    case Format::JSON:
        printJson(fault, texts, output);
        break;
    case Format::CSV:
        output.print(chosenOfBoth(tableOf(faultView), tableOf(textsView), request));
        break;
    }
}

void keepLanguages(const std::set<std::uint16_t>& languages, std::vector<Descriptions>& texts)
{
    const auto isOther = [&](const Descriptions& text) {
        return languages.count(text.id_language) == 0;
    };
    if (!languages.empty()) {
        texts.erase(std::remove_if(texts.begin(), texts.end(), isOther), texts.end());
    }
}

void printDelivered(Database& database, const FaultTypeDef& fault, const FaultRequest& request,
                    Output& output)
{
    const std::vector<FaultTypeDef> faults = {fault};
    std::vector<Descriptions> texts = database.textsOf(fault.code);
    keepLanguages(request.languages, texts);
    print(viewOf(faults), viewOf(texts), request, output);
}

/// The rows that the lookups find.
void printStored(const Database& database, const FaultTypeDef& fault, const FaultRequest& request,
                 Output& output)
{
    readingStored(database, [&](const RawDatabase& raw) {
        const auto conditionOf = [&](const TableModel& model) {
            return formatted(R"("{}"{}{})", model.filterColumn().name, model.comparison,
                             fault.code);
        };
        std::string ofTexts = conditionOf(descriptionsModel());
        if (!request.languages.empty()) {
            ofTexts += formatted(R"( AND "{}" IN ({}))", descriptionsColumns().language,
                                 listed(request.languages, ","));
        }
        print(viewOfStored(raw, faultTypeModel(), conditionOf(faultTypeModel())),
              viewOfStored(raw, descriptionsModel(), ofTexts), request, output);
    });
}

ExitStatus show(Database& database, const FaultTypeDef& fault, const FaultRequest& request,
                Output& output)
{
    if (request.listing.isStored) {
        printStored(database, fault, request, output);
    } else {
        printDelivered(database, fault, request, output);
    }
    return ExitStatus::DONE;
}

ExitStatus showCode(Database& database, const FaultRequest& request, Output& output)
{
    if (const std::optional<FaultTypeDef> fault = database.faultType(request.code)) {
        return show(database, *fault, request, output);
    }
    printMessage(formatted("{}: no fault type has the code {}", database.file(), request.code));
    return ExitStatus::NOT_FOUND_OR_FINDINGS;
}

/// As it is written, or else in any letter case.
std::vector<FaultTypeDef> faultTypesWithAlias(const std::vector<FaultTypeDef>& faultTypes,
                                              const std::string& alias)
{
    std::vector<FaultTypeDef> found;
    const auto take = [&](const auto& isAlias) {
        std::copy_if(faultTypes.begin(), faultTypes.end(), std::back_inserter(found),
                     [&](const FaultTypeDef& each) { return isAlias(each.alias); });
    };
    take([&](const std::string& each) { return each == alias; });
    if (found.empty()) {
        const std::string lower = lowerCase(alias);
        take([&](const std::string& each) { return lowerCase(each) == lower; });
    }
    return found;
}

std::vector<std::string> aliasesOf(const std::vector<FaultTypeDef>& faultTypes)
{
    std::vector<std::string> aliases;
    for (const FaultTypeDef& each : faultTypes) {
        aliases.push_back(each.alias);
    }
    return aliases;
}

ExitStatus showAlias(Database& database, const FaultRequest& request, Output& output)
{
    const std::vector<FaultTypeDef> all = database.faultTypes();
    const std::vector<FaultTypeDef> found = faultTypesWithAlias(all, request.alias);
    if (found.size() == 1) {
        return show(database, found.front(), request, output);
    }
    if (found.empty()) {
        printMessage(formatted("{}: no fault type has the alias {}{}", database.file(),
                               request.alias, nearestAlias(request.alias, aliasesOf(all))));
    } else {
        const TableView list = chosenColumns(viewOf(found), request.listing.columns);
        output.print(list.columns.empty() ? viewOf(found) : list);
        printMessage(formatted("{}: {} fault types have the alias {}", database.file(),
                               found.size(), request.alias));
    }
    return ExitStatus::NOT_FOUND_OR_FINDINGS;
}

}  // namespace

std::vector<std::string> faultColumns()
{
    std::vector<std::string> names = faultTypeModel().columnNames();
    const std::vector<std::string> ofTexts = descriptionsModel().columnNames();
    names.insert(names.end(), ofTexts.begin(), ofTexts.end());
    return names;
}

ExitStatus runFault(Database& database, const FaultRequest& request, Output& output)
{
    return request.alias.empty() ? showCode(database, request, output)
                                 : showAlias(database, request, output);
}
