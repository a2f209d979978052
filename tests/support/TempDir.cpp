#include "support/TempDir.h"

#include <stdlib.h>

#include <filesystem>
#include <system_error>

TempDir::TempDir()
{
    std::string name = std::filesystem::temp_directory_path() / "zav-test-XXXXXX";
    if (mkdtemp(name.data()) == nullptr) {
        throw std::system_error(errno, std::generic_category(), "mkdtemp " + name);
    }
    m_path = name;
}

TempDir::~TempDir()
{
    std::error_code ignored;
    std::filesystem::remove_all(m_path, ignored);
}
