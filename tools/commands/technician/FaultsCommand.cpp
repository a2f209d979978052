#include "FaultsCommand.h"

#include "database/stored/readingStored.h"
#include "output/chosenColumns.h"
#include "output/recordTables.h"
#include "output/storedTables.h"

ExitStatus runFaults(Database& database, const ListingOptions& options, Output& output)
{
    if (options.isStored) {
        readingStored(database, [&](const RawDatabase& raw) {
            output.print(chosenColumns(viewOfStored(raw, faultTypeModel()), options.columns));
        });
    } else {
        const std::vector<FaultTypeDef> faultTypes = database.faultTypes();
        output.print(chosenColumns(viewOf(faultTypes), options.columns));
    }
    return ExitStatus::DONE;
}
