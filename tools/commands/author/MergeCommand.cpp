#include "MergeCommand.h"

#include "commands/exchange/rowObstacles.h"
#include "commands/exchange/xliff/mergeTranslations.h"
#include "commands/exchange/xliff/readXliff.h"
#include "commands/info/boundedInfo.h"
#include "commands/placing/placeDatabase.h"
#include "database/Database.h"
#include "database/stored/writeStored.h"

namespace {

StoredFile contentOf(const MergeRequest& request)
{
    const Database database(request.file, 0);
    StoredFile content = readStored(database);
    refuseObstacles(request.file, fileObstacles(database, content, request.dropsOwn));
    return content;
}

MergedTexts mergeInto(StoredFile& content, const MergeRequest& request)
{
    Mistakes mistakes;
    const std::vector<Translation> translations = readXliffFile(request.translations, mistakes);
    const MergedTexts merged =
        mergeTranslations(translations, request.translations, content, mistakes);
    refuseMistakes(mistakes, request.translations);
    return merged;
}

}  // namespace

ExitStatus runMerge(const MergeRequest& request, Output& output)
{
    StoredFile content;
    MergedTexts merged;
    std::int32_t release = 0;
    Placing placing;
    placing.target = request.target;
    placing.name = request.target;
    placing.refusal = "not merged";
    placing.showFrom = Severity::WARNING;
    placing.prepare = [&] {
        release = request.release ? *request.release : boundedInfo(request.file).release;
        content = contentOf(request);
        merged = mergeInto(content, request);
    };
    placing.fill = [&](Replacement& replacement) {
        refuseExisting(replacement, placing, request.isForced);
        writeStored(replacement.path(), content, release);
        content = {};  // the processes that look at the file would have it, too
    };
    placing.counts = [&] {
        return std::vector<NamedCount>{{"changed", merged.changed}, {"added", merged.added}};
    };
    return placeDatabase(placing, output);
}
