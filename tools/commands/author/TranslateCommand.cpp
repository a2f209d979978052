#include "TranslateCommand.h"

#include <filesystem>

#include "commands/exchange/rowObstacles.h"
#include "commands/exchange/xliff/translationOf.h"
#include "commands/exchange/xliff/writeXliff.h"
#include "commands/exchange/xliff/xmlCharacters.h"
#include "database/DatabaseErrors.h"
#include "text/formatted.h"
#include "text/message.h"

namespace {

Translation::Language languageFrom(std::uint16_t number, const TranslateRequest& request)
{
    const auto named = request.names.find(number);
    return {number, named == request.names.end() ? formatted("x-{}", number) : named->second};
}

/// A file that reads as text may hold characters that XML has no place for.
std::vector<std::string> xmlObstacles(const Translation& translation)
{
    std::vector<std::string> obstacles;
    for (const TranslationUnit& unit : translation.units) {
        const std::pair<const char*, const std::string&> texts[] = {{"text", unit.source},
                                                                    {"translation", unit.target},
                                                                    {"alias", unit.alias},
                                                                    {"comment", unit.comment}};
        for (const auto& [name, text] : texts) {
            if (xmlLength(text) < text.size()) {
                obstacles.push_back(
                    formatted("{}: the {} holds a character that XML cannot hold", unit.id, name));
            }
        }
    }
    return obstacles;
}

Translation translationFor(const Database& database, const TranslateRequest& request)
{
    const StoredFile content = readStored(database);
    refuseObstacles(database.file(), rowObstacles(content));
    if (!hasTextIn(request.from, content)) {
        throw UnfitFile(
            formatted("{}: no text has the language {}", database.file(), request.from));
    }
    const std::string original = std::filesystem::path(database.file()).filename().string();
    Translation translation =
        translationOf(content, {original, languageFrom(request.from, request),
                                languageFrom(request.to, request), request.isMissingOnly});
    refuseObstacles(database.file(), xmlObstacles(translation));
    return translation;
}

}  // namespace

ExitStatus runTranslate(const Database& database, const TranslateRequest& request, Output& output)
try {
    output.printText(xliffOf(translationFor(database, request)));
    return ExitStatus::DONE;
} catch (const UnfitFile& unfit) {
    printMessage(formatted("not translated: {}", unfit.what()));
    return ExitStatus::NOT_FOUND_OR_FINDINGS;
}
