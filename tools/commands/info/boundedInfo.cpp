#include "boundedInfo.h"

#include <filesystem>
#include <nlohmann/json.hpp>

#include "InfoJson.h"
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

/// @throws UnreadableFile
std::uintmax_t sizeOf(const std::string& file)
{
    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(file, error);
    if (error) {  // neither a folder nor a pipe has a size
        throw UnreadableFile(formatted("{}: cannot be opened: {}", file, error.message()));
    }
    return size;
}

}  // namespace

BoundedInfo::BoundedInfo(const std::string& file, std::optional<std::uint16_t> source)
    : m_file(file),
      m_process([&](const Writer& write) { write(answerFor(file, source)); },
                mostTimeFor(sizeOf(file)))
{
}

FileInfo BoundedInfo::take()
{
    const ProcessResult result = m_process.wait([] {});
    if (result.end != ProcessResult::End::DONE) {
        throw UnreadableFile(formatted("{}: cannot be read: it is damaged; see zav check", m_file));
    }
    const Json answer = Json::parse(result.output);
    if (answer.contains(ERROR)) {
        throw UnreadableFile(answer[ERROR]);
    }
    return infoFrom(answer);
}

FileInfo boundedInfo(const std::string& file, std::optional<std::uint16_t> source)
{
    return BoundedInfo(file, source).take();
}
