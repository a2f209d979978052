#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <vector>

#include "Image.h"
#include "Operation.h"
#include "Random.h"
#include "StoredFile.h"

/// A disk with one folder, and what may be on it after a power cut.
///
/// A sync of a file makes its bytes last, not its name. Creating and removing are changes of the
/// folder, which reach the disk in their order, as on a file system with a journal; those since the
/// folder's last sync may be lost, and so a removed file may be back, or a new one be gone.
class Disk {
public:
    /// @param image  all that is on it, synced.
    explicit Disk(const Image& image);

    void apply(const Operation& operation);

    /// @return the files as programs see them.
    Image image() const;

    Image afterPowerCut(Random& random) const;

    /// @return whether a file that was removed may be back.
    bool mayRestore() const;

private:
    /// The indexes of files in m_files, by name.
    using Folder = std::map<std::string, std::size_t>;

    StoredFile& fileOf(const Operation& operation);

    std::vector<StoredFile> m_files;  // those removed, too
    std::vector<Folder> m_folders;    // as synced, and after each change since
};
