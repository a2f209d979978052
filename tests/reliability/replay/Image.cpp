#include "Image.h"

#include <filesystem>

#include "support/database.h"

namespace fs = std::filesystem;

Image imageOf(const std::string& folder)
{
    Image image;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
        image[entry.path().filename()] = contents(entry.path());
    }
    return image;
}

void lay(const Image& image, const std::string& folder)
{
    fs::remove_all(folder);
    fs::create_directories(folder);
    for (const auto& [name, bytes] : image) {
        setContents(folder + "/" + name, bytes);
    }
}
