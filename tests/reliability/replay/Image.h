#pragma once

#include <map>
#include <string>

/// The files of a folder, by their names.
using Image = std::map<std::string, std::string>;

/// @return the files that a folder holds.
Image imageOf(const std::string& folder);

/// Makes a folder hold these files and no others.
void lay(const Image& image, const std::string& folder);
