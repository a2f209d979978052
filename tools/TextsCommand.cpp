#include "TextsCommand.h"

#include <algorithm>

#include "recordTables.h"

namespace {

void keepLanguage(std::uint16_t language, std::vector<Descriptions>& texts)
{
    const auto isOther = [language](const Descriptions& text) {
        return text.id_language != language;
    };
    texts.erase(std::remove_if(texts.begin(), texts.end(), isOther), texts.end());
}

}  // namespace

ExitStatus runTexts(Database& database, const TextsFilter& filter, Output& output)
{
    std::vector<Descriptions> texts =
        filter.code ? database.textsOf(*filter.code) : database.texts();
    if (filter.language) {
        keepLanguage(*filter.language, texts);
    }
    output.print(tableOf(texts));
    return filter.isSet() && texts.empty() ? ExitStatus::NOT_FOUND_OR_FINDINGS : ExitStatus::DONE;
}
