#include "SqlCommand.h"

#include <fmt/format.h>

#include <algorithm>

#include "CheckFindings.h"
#include "SqlText.h"
#include "counted.h"
#include "message.h"
#include "zav/ZavSqlDescriptionsTbl.h"
#include "zav/ZavSqlFaultTypeDefTbl.h"

namespace {

/// The library's statements take texts as they are.
FaultTypeDef madeReady(FaultTypeDef record)
{
    record.alias = sqlText(record.alias);
    record.type = sqlText(record.type);
    return record;
}

Descriptions madeReady(Descriptions record)
{
    for (std::string* text : {&record.name, &record.short_description, &record.description,
                              &record.comment, &record.remedy}) {
        *text = sqlText(*text);
    }
    return record;
}

std::uint32_t keyOf(const FaultTypeDef& record)
{
    return record.code;
}

std::uint32_t keyOf(const Descriptions& record)
{
    return record.id;
}

/// The library's statement leaves the key to the database, so a second one sets it afterwards.
template <class Record>
std::string insertion(const Record& record, SqlTbl<Record>& table)
{
    return fmt::format("{};\nUPDATE {} SET '{}'={} WHERE rowid=last_insert_rowid();\n",
                       table.getSqlInsertValuesQuery(madeReady(record)), table.tableName,
                       table.columns.front().name, keyOf(record));
}

template <class Record>
std::string update(const Record& record, SqlTbl<Record>& table)
{
    return fmt::format("{} WHERE {}={};\n", table.getSqlUpdateValuesQuery(madeReady(record)),
                       table.columns.front().name, keyOf(record));
}

template <class Record>
std::string script(const std::vector<Record>& records, SqlTbl<Record>& table, Statement statement)
{
    std::string text;
    for (const Record& record : records) {
        text += statement == Statement::INSERT ? insertion(record, table) : update(record, table);
    }
    return text;
}

void warnOfLosses(const Database& database, const std::vector<std::string>& tables)
{
    const Findings findings = findSurprises(database);
    const auto losses = static_cast<std::size_t>(
        std::count_if(findings.begin(), findings.end(), [&](const Finding& finding) {
            return finding.isLoss &&
                   std::find(tables.begin(), tables.end(), finding.table) != tables.end();
        }));
    if (losses > 0) {
        printMessage(fmt::format(
            "warning: {}: the statements differ from the file in {}; zav check lists them",
            database.file(), counted(losses, "place")));
    }
}

}  // namespace

ExitStatus runSql(Database& database, Statement statement, TableChoice choice, Output& output)
{
    std::string text = "BEGIN;\n";
    std::vector<std::string> tables;
    if (choice != TableChoice::DESCRIPTIONS) {
        ZavSqlFaultTypeDefTbl table("fault_type_definition");
        text += script(database.faultTypes(), table, statement);
        tables.push_back(table.tableName);
    }
    if (choice != TableChoice::FAULT_TYPE_DEFINITION) {
        ZavSqlDescriptionsTbl table("descriptions");
        text += script(database.texts(), table, statement);
        tables.push_back(table.tableName);
    }
    warnOfLosses(database, tables);
    output.printText(text + "COMMIT;\n");
    return ExitStatus::DONE;
}
