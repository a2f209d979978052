#include "SqlCommand.h"

#include <algorithm>

#include "check/checkContents.h"
#include "database/LibraryTable.h"
#include "database/TableModel.h"
#include "text/SqlText.h"
#include "text/counted.h"
#include "text/formatted.h"
#include "text/message.h"

namespace {

template <class Record>
using Column = typename SqlTbl<Record>::column_t;

/// Puts a record into the table's working record, of which the statements are made: the library
/// takes texts as they are.
template <class Record>
void load(const Record& record, SqlTbl<Record>& table)
{
    table.record = record;
    for (const Column<Record>& column : table.columns) {
        if (column.valueType == SqlTbl<Record>::VALUE_TYPE_STRING) {
            auto& text = *static_cast<std::string*>(column.pValue);
            text = sqlText(text);
        }
    }
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
std::string insertion(const SqlTbl<Record>& table)
{
    return formatted("{};\nUPDATE {} SET '{}'={} WHERE rowid=last_insert_rowid();\n",
                     table.getSqlInsertValues(), table.tableName, table.columns.front().name,
                     keyOf(table.record));
}

template <class Record>
std::string update(const SqlTbl<Record>& table)
{
    return formatted("{} WHERE {}={};\n", table.getSqlUpdateValues(), table.columns.front().name,
                     keyOf(table.record));
}

template <class Record>
std::string script(const std::vector<Record>& records, Statement statement)
{
    LibraryTable<Record> table;
    std::string text;
    for (const Record& record : records) {
        load(record, table);
        text += statement == Statement::INSERT ? insertion(table) : update(table);
    }
    return text;
}

void warnOfLosses(const Database& database, const std::vector<std::string>& tables)
{
    std::size_t losses = 0;
    checkContents(RawDatabase(database.file()), {}, [&](const Finding& finding) {
        const bool isInScript =
            std::find(tables.begin(), tables.end(), finding.table) != tables.end();
        losses += isInScript && isLoss(finding) ? 1U : 0U;
    });
    if (losses > 0) {
        printMessage(formatted(
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
        text += script(database.faultTypes(), statement);
        tables.push_back(faultTypeModel().name);
    }
    if (choice != TableChoice::FAULT_TYPE_DEFINITION) {
        text += script(database.texts(), statement);
        tables.push_back(descriptionsModel().name);
    }
    warnOfLosses(database, tables);
    output.printText(text + "COMMIT;\n");
    return ExitStatus::DONE;
}
