#include "FaultsCommand.h"

#include "output/recordTables.h"

ExitStatus runFaults(Database& database, Output& output)
{
    output.print(tableOf(database.faultTypes()));
    return ExitStatus::DONE;
}
