#include "FaultsCommand.h"

#include "output/recordTables.h"

ExitStatus runFaults(Database& database, Output& output)
{
    const std::vector<FaultTypeDef> faultTypes = database.faultTypes();
    output.print(viewOf(faultTypes));
    return ExitStatus::DONE;
}
