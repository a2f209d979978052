#include "DiffCommand.h"

#include <algorithm>

#include "commands/changes/writeChanges.h"
#include "database/Database.h"

namespace {

StoredFile contentOf(const std::string& file, int debugLevel)
{
    const Database database(file, debugLevel);
    return readStored(database);
}

template <class Number>
bool isIn(const std::set<Number>& chosenNumbers, const RawCell& cell)
{
    return std::any_of(chosenNumbers.begin(), chosenNumbers.end(),
                       [&](Number number) { return std::to_string(number) == cell.bytes; });
}

bool isWanted(const Change& change, const DiffRequest& request)
{
    const bool isOfLanguage =
        request.languages.empty() || (change.language && isIn(request.languages, *change.language));
    return isOfLanguage && (request.codes.empty() || isIn(request.codes, change.code));
}

void addAliases(const StoredFile& content, ChangeList& list)
{
    for (const StoredRow& row : content.faultTypes) {
        const RawCell& alias = row[StoredFile::ALIAS];
        if (!alias.isNull() && !alias.bytes.empty()) {
            list.aliases.emplace(row[StoredFile::CODE].bytes, alias.bytes);
        }
    }
}

ChangeList changesOf(const DiffRequest& request)
{
    const StoredFile before = contentOf(request.before, request.debugLevel);
    const StoredFile after = contentOf(request.after, request.debugLevel);
    ChangeList list;
    for (Change& change : compareStored(before, after)) {
        if (isWanted(change, request)) {
            list.changes.push_back(std::move(change));
        }
    }
    addAliases(after, list);
    addAliases(before, list);
    return list;
}

void write(const ChangeList& list, DiffFormat format, Output& output)
{
    switch (format) {
    case DiffFormat::JSON:
        return writeChangesAsJson(list, output);
    case DiffFormat::CSV:
        return writeChangesAsCsv(list, output);
    case DiffFormat::MARKDOWN:
        return writeChangesAsMarkdown(list, output);
    default:
        return writeChanges(list, output);
    }
}

}  // namespace

ExitStatus runDiff(const DiffRequest& request, Output& output)
{
    const ChangeList list = changesOf(request);
    write(list, request.format, output);
    return list.changes.empty() ? ExitStatus::DONE : ExitStatus::NOT_FOUND_OR_FINDINGS;
}
