#include "CheckFindings.h"

#include <fmt/format.h>

#include "checkColumns.h"
#include "checkJournals.h"
#include "checkRelations.h"
#include "checkValues.h"
#include "database/RawDatabase.h"
#include "database/TableModel.h"

namespace {

Finding missingTable(const TableModel& model)
{
    return {"missing-table",
            model.name,
            "",
            "",
            "",
            "no records: every query of the table fails",
            "create the table; zav(1) shows the statement",
            true};
}

void checkTable(const RawDatabase& database, const TableModel& model,
                const std::optional<RawTable>& table, Findings& findings)
{
    if (!table) {
        findings.push_back(missingTable(model));
        return;
    }
    checkColumns(database, model, *table, findings);
    checkValues(database, model, *table, findings);
    checkKeys(model, *table, findings);
}

}  // namespace

Findings findSurprises(const Database& opened)
{
    const RawDatabase database(opened.file());
    const TableModel faultTypes = faultTypeModel();
    const TableModel descriptions = descriptionsModel();
    const std::optional<RawTable> faultTypeTable = database.table(faultTypes.name);
    const std::optional<RawTable> descriptionsTable = database.table(descriptions.name);

    Findings findings;
    checkJournals(opened.journals(), findings);
    checkTable(database, faultTypes, faultTypeTable, findings);
    checkTable(database, descriptions, descriptionsTable, findings);
    if (descriptionsTable) {
        checkIndex(database, descriptions, findings);
    }
    if (faultTypeTable && descriptionsTable) {
        checkTexts(*faultTypeTable, *descriptionsTable, findings);
    }
    return findings;
}
