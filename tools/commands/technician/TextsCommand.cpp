#include "TextsCommand.h"

#include <fmt/format.h>

#include <algorithm>
#include <string>
#include <vector>

#include "output/recordTables.h"
#include "text/message.h"

namespace {

void keepLanguage(std::uint16_t language, std::vector<Descriptions>& texts)
{
    const auto isOther = [language](const Descriptions& text) {
        return text.id_language != language;
    };
    texts.erase(std::remove_if(texts.begin(), texts.end(), isOther), texts.end());
}

std::string wanted(const TextsFilter& filter)
{
    std::vector<std::string> conditions;
    if (filter.code) {
        conditions.push_back(fmt::format("the code {}", *filter.code));
    }
    if (filter.language) {
        conditions.push_back(fmt::format("the language {}", *filter.language));
    }
    return fmt::format("{}", fmt::join(conditions, " and "));
}

}  // namespace

ExitStatus runTexts(Database& database, const TextsFilter& filter, Output& output)
{
    std::vector<Descriptions> texts =
        filter.code ? database.textsOf(*filter.code) : database.texts();
    if (filter.language) {
        keepLanguage(*filter.language, texts);
    }
    output.print(viewOf(texts));
    if (!filter.isSet() || !texts.empty()) {
        return ExitStatus::DONE;
    }
    printMessage(fmt::format("{}: no text has {}", database.file(), wanted(filter)));
    return ExitStatus::NOT_FOUND_OR_FINDINGS;
}
