#include "Journals.h"

#include <filesystem>
#include <fstream>

namespace {

namespace fs = std::filesystem;

/// By the header of SQLite's file format.
bool isInWalMode(const fs::path& file)
{
    constexpr std::streamoff READ_VERSION = 19;
    constexpr int WAL = 2;
    std::ifstream stream(file, std::ios::binary);
    stream.seekg(READ_VERSION);
    return stream.get() == WAL;
}

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
    return {isInWalMode(target), nameBeside(target, "-journal"), nameBeside(target, "-wal")};
}
