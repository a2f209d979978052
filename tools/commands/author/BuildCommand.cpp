#include "BuildCommand.h"

#include "commands/exchange/readSources.h"
#include "commands/placing/placeDatabase.h"
#include "database/stored/writeStored.h"

namespace {

StoredFile faultlessSources(const std::string& folder)
{
    Mistakes mistakes;
    StoredFile content = readSources(folder, mistakes);
    refuseMistakes(mistakes, folder);
    return content;
}

}  // namespace

ExitStatus runBuild(const BuildRequest& request, Output& output)
{
    StoredFile content;
    Placing placing;
    placing.target = request.target;
    placing.name = request.target;
    placing.refusal = "not built";
    placing.showFrom = Severity::WARNING;
    placing.prepare = [&] { content = faultlessSources(request.folder); };
    placing.fill = [&](Replacement& replacement) {
        refuseExisting(replacement, placing, request.isForced);
        writeStored(replacement.path(), content, request.release);
        content = {};  // the processes that look at the file would have it, too
    };
    return placeDatabase(placing, output);
}
