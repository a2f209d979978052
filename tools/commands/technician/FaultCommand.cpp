#include "FaultCommand.h"

#include <fmt/format.h>

#include <nlohmann/json.hpp>

#include "output/formats.h"
#include "output/recordTables.h"
#include "text/message.h"

namespace {

void printRecords(const Table& fault, const Table& texts, Output& output)
{
    output.printRecords(fault);
    if (!texts.rows.empty()) {
        output.printText("\n");
        output.printRecords(texts);
    }
}

void printJson(const Table& fault, const Table& texts, Output& output)
{
    nlohmann::ordered_json object = toJson(fault).front();
    object["texts"] = toJson(texts);
    output.printJson(object);
}

/// One row per text, each beginning with the fault type; a fault type without texts has one row all
/// the same.
Table joined(const Table& fault, const Table& texts)
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

void print(const Table& fault, const Table& texts, Output& output)
{
    switch (output.format()) {
    case Format::TABLE:
        printRecords(fault, texts, output);
        break;
    case Format::JSON:
        printJson(fault, texts, output);
        break;
    case Format::CSV:
        output.print(joined(fault, texts));
        break;
    }
}

}  // namespace

ExitStatus runFault(Database& database, std::uint16_t code, Output& output)
{
    const std::optional<FaultTypeDef> fault = database.faultType(code);
    if (!fault) {
        printMessage(fmt::format("{}: no fault type has the code {}", database.file(), code));
        return ExitStatus::NOT_FOUND_OR_FINDINGS;
    }
    const std::vector<FaultTypeDef> faults = {*fault};
    const std::vector<Descriptions> texts = database.textsOf(code);
    print(tableOf(viewOf(faults)), tableOf(viewOf(texts)), output);
    return ExitStatus::DONE;
}
