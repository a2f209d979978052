#include "NewFiles.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <fstream>
#include <stdexcept>

#include "database/replacement/Descriptor.h"
#include "text/formatted.h"

namespace {

namespace fs = std::filesystem;

fs::path newFileBeside(const fs::path& file)
{
    return file.string() + ".zav-new";
}

void require(bool isDone, const fs::path& file)
{
    if (!isDone) {
        throw std::runtime_error(
            formatted("{}: cannot be written: {}", file.string(), std::strerror(errno)));
    }
}

}  // namespace

NewFiles::~NewFiles()
{
    std::error_code error;
    for (const fs::path& file : m_files) {
        fs::remove(newFileBeside(file), error);
    }
}

void NewFiles::add(const fs::path& file, const std::string& content)
{
    m_files.push_back(file);
    std::ofstream stream(newFileBeside(file), std::ios::binary);
    stream << content;
    stream.close();
    require(stream.good(), file);
    const Descriptor written(open(newFileBeside(file).c_str(), O_RDONLY | O_CLOEXEC));
    require(written.isOpen() && fsync(written.number()) == 0, file);
}

void NewFiles::putInPlace()
{
    for (const fs::path& file : m_files) {
        require(std::rename(newFileBeside(file).c_str(), file.c_str()) == 0, file);
    }
    m_files.clear();
}
