#pragma once

#include <filesystem>
#include <string>
#include <vector>

/// Files that are written beside their places, and put there once all are written.
class NewFiles {
public:
    NewFiles() = default;

    /// Removes what has not been put in place.
    ~NewFiles();
    NewFiles(const NewFiles&) = delete;
    NewFiles& operator=(const NewFiles&) = delete;

    /// @throws std::runtime_error
    void add(const std::filesystem::path& file, const std::string& content);

    /// Takes the places of files of the same names.
    ///
    /// @throws std::runtime_error
    void putInPlace();

private:
    std::vector<std::filesystem::path> m_files;
};
