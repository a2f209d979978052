#include "InfoJson.h"

#include <nlohmann/json.hpp>

namespace {

using Json = nlohmann::ordered_json;

constexpr const char* WAL_MODE = "wal";
constexpr const char* ROLLBACK_MODE = "delete";

Json toJson(const LanguageInfo& info)
{
    Json object;
    object["language"] = info.language;
    object["with_text"] = info.withText;
    object["without_text"] = info.withoutText;
    object["same_as_source"] = info.sameAsSource ? Json(*info.sameAsSource) : Json();
    return object;
}

LanguageInfo languageFrom(const Json& object)
{
    LanguageInfo info = {object["language"], object["with_text"], object["without_text"],
                         std::nullopt};
    if (!object["same_as_source"].is_null()) {
        info.sameAsSource = object["same_as_source"].get<std::size_t>();
    }
    return info;
}

}  // namespace

Json toJson(const FileInfo& info)
{
    Json object;
    object["release"] = info.release;
    object["content"] = info.content;
    object["fault_types"] = info.faultTypes;
    object["texts"] = info.texts;
    object["languages"] = Json::array();
    for (const LanguageInfo& language : info.languages) {
        object["languages"].push_back(toJson(language));
    }
    object["journal_mode"] = journalModeOf(info);
    object["size"] = info.size;
    object["sqlite_version"] = info.sqliteVersion;
    return object;
}

FileInfo infoFrom(const Json& json)
{
    FileInfo info = {};
    info.release = json["release"];
    info.content = json["content"];
    info.faultTypes = json["fault_types"];
    info.texts = json["texts"];
    for (const Json& language : json["languages"]) {
        info.languages.push_back(languageFrom(language));
    }
    info.isWalMode = json["journal_mode"] == WAL_MODE;
    info.size = json["size"];
    info.sqliteVersion = json["sqlite_version"];
    return info;
}

const char* journalModeOf(const FileInfo& info)
{
    return info.isWalMode ? WAL_MODE : ROLLBACK_MODE;
}
