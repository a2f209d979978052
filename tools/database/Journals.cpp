#include "Journals.h"

#include <filesystem>
#include <fstream>

namespace {

namespace fs = std::filesystem;

/// The name of the file with a suffix, if there is such a file beside it.
std::string nameBeside(const fs::path& file, const std::string& suffix)
{
    std::error_code error;
    const fs::path beside = file.string() + suffix;
    return fs::exists(beside, error) ? beside.filename().string() : "";
}

}  // namespace

Journals journalsOf(const std::string& file)
{
    std::error_code error;
    const fs::path target = fs::canonical(file, error);  // SQLite's journals are beside a link's
    if (error || !fs::is_regular_file(target, error)) {
        return {};
    }
    return {saysWalMode(headerOf(target.string())), nameBeside(target, JOURNAL_SUFFIX),
            nameBeside(target, WAL_SUFFIX)};
}

std::string headerOf(const std::string& file)
{
    std::string header(SQLITE_HEADER_SIZE, '\0');
    std::ifstream stream(file, std::ios::binary);
    stream.read(header.data(), static_cast<std::streamsize>(header.size()));
    return header;
}

bool saysWalMode(std::string_view header)
{
    constexpr std::size_t READ_VERSION = 19;
    constexpr char WAL = 2;
    return header.size() > READ_VERSION && header[READ_VERSION] == WAL;
}
