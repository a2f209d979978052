#include "boundedInfo.h"

#include <filesystem>
#include <nlohmann/json.hpp>

#include "InfoJson.h"
#include "check/file/BoundedProcess.h"
#include "database/Database.h"
#include "database/DatabaseErrors.h"
#include "database/LibraryLines.h"
#include "text/formatted.h"

namespace {

using Json = nlohmann::ordered_json;

constexpr const char* ERROR = "error";

std::string answerOf(const Json& object)
{
    return object.dump(-1, ' ', false, Json::error_handler_t::replace);
}

std::string answerFor(const std::string& file, std::optional<std::uint16_t> source)
{
    try {
        const LibrarySilence silence;
        const Database readable(file, 0);
        return answerOf(toJson(fileInfo(file, source)));
    } catch (const UnreadableFile& failure) {
        return answerOf({{ERROR, failure.what()}});
    }
}

}  // namespace

FileInfo boundedInfo(const std::string& file, std::optional<std::uint16_t> source)
{
    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(file, error);
    if (error) {  // neither a folder nor a pipe has a size
        throw UnreadableFile(formatted("{}: cannot be opened: {}", file, error.message()));
    }
    const ProcessResult result = runBounded(
        [&](const Writer& write) { write(answerFor(file, source)); }, mostTimeFor(size), [] {});
    if (result.end != ProcessResult::End::DONE) {
        throw UnreadableFile(formatted("{}: cannot be read: it is damaged; see zav check", file));
    }
    const Json answer = Json::parse(result.output);
    if (answer.contains(ERROR)) {
        throw UnreadableFile(answer[ERROR]);
    }
    return infoFrom(answer);
}
