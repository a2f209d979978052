#include "Disk.h"

#include <algorithm>

using Kind = Operation::Kind;

Disk::Disk(const Image& image)
{
    Folder folder;
    for (const auto& [name, bytes] : image) {
        folder[name] = m_files.size();
        m_files.emplace_back(bytes);
    }
    m_folders = {folder};
}

StoredFile& Disk::fileOf(const Operation& operation)
{
    return m_files[m_folders.back().at(operation.file)];
}

void Disk::apply(const Operation& operation)
{
    Folder folder = m_folders.back();
    switch (operation.kind) {
    case Kind::CREATE:
        folder[operation.file] = m_files.size();
        m_files.emplace_back();
        m_folders.push_back(folder);
        break;
    case Kind::WRITE:
    case Kind::TRUNCATE:
        fileOf(operation).change(operation);
        break;
    case Kind::REMOVE:
        folder.erase(operation.file);
        m_folders.push_back(folder);
        break;
    case Kind::SYNC:
        fileOf(operation).sync();
        break;
    case Kind::SYNC_FOLDER:
        m_folders = {folder};
        break;
    }
}

Image Disk::image() const
{
    Image image;
    for (const auto& [name, index] : m_folders.back()) {
        image[name] = m_files[index].bytes();
    }
    return image;
}

Image Disk::afterPowerCut(Random& random) const
{
    Image image;
    for (const auto& [name, index] : m_folders[random.upTo(m_folders.size() - 1)]) {
        image[name] = m_files[index].afterPowerCut(random);
    }
    return image;
}

bool Disk::mayRestore() const
{
    const Folder& now = m_folders.back();
    const auto isGone = [&now](const Folder::value_type& file) {
        const auto found = now.find(file.first);
        return found == now.end() || found->second != file.second;
    };
    return std::any_of(m_folders.begin(), m_folders.end(), [&isGone](const Folder& folder) {
        return std::any_of(folder.begin(), folder.end(), isGone);
    });
}
