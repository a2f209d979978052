#include "BuildCommand.h"

#include <iostream>

#include "commands/exchange/readSources.h"
#include "commands/placing/placeDatabase.h"
#include "database/DatabaseErrors.h"
#include "database/stored/writeStored.h"
#include "text/TextWidth.h"
#include "text/counted.h"
#include "text/formatted.h"

namespace {

/// @return as editors and compilers write it, so that others find the place.
std::string lineOf(const Mistake& mistake)
{
    std::string line = mistake.file;
    line += mistake.line > 0 ? formatted(":{}", mistake.line) : "";
    line += mistake.column.empty() ? "" : formatted(": {}", mistake.column);
    return printableLine(formatted("{}: {}", line, mistake.what));
}

StoredFile faultlessSources(const std::string& folder)
{
    Mistakes mistakes;
    StoredFile content = readSources(folder, mistakes);
    for (const Mistake& mistake : mistakes) {
        std::cerr << lineOf(mistake) << '\n';
    }
    if (!mistakes.empty()) {
        throw UnfitFile(formatted("{}: {}", folder, counted(mistakes.size(), "mistake")));
    }
    return content;
}

void refuseExisting(Replacement& replacement, const BuildRequest& request)
{
    if (replacement.replaced().exists() && !request.isForced) {
        throw RefusedReplacement(request.target + ": is there already; --force replaces it");
    }
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
        refuseExisting(replacement, request);
        writeStored(replacement.path(), content, request.release);
        content = {};  // the processes that look at the file would have it, too
    };
    return placeDatabase(placing, output);
}
