#pragma once

#include <string>
#include <vector>

/// A file that is unusual, and has to read as ever.
struct HonestFile {
    const char* name;
    bool isReadOnSmallestStack;
    void (*make)(const std::string& file);
};

std::vector<HonestFile> honestFiles();
