#include "StoredFile.h"

#include <algorithm>
#include <map>

namespace {

using Kind = Operation::Kind;
using Changes = std::vector<Operation>;

std::size_t sizeAfter(const Operation& change, std::size_t size)
{
    return change.kind == Kind::TRUNCATE ? change.offset
                                         : std::max(size, change.offset + change.bytes.size());
}

/// @return the file's size after so many of its changes.
std::size_t sizeAfter(const Changes& changes, std::size_t count, std::size_t size)
{
    for (std::size_t i = 0; i < count; ++i) {
        size = sizeAfter(changes[i], size);
    }
    return size;
}

std::size_t largestSize(const Changes& changes, std::size_t size)
{
    std::size_t largest = size;
    for (const Operation& change : changes) {
        size = sizeAfter(change, size);
        largest = std::max(largest, size);
    }
    return largest;
}

/// Draws, once for each sector of a file, how many of the file's changes it has seen.
class ArrivedChanges {
public:
    ArrivedChanges(std::size_t changes, Random& random)
        : m_changes(changes),
          m_percentAll(random.upTo(100)),
          m_percentNone(random.upTo(100)),
          m_random(random)
    {
    }

    std::size_t of(std::size_t sector)
    {
        const auto [found, isNew] = m_drawn.try_emplace(sector);
        if (isNew) {
            found->second = draw();
        }
        return found->second;
    }

    std::size_t draw()
    {
        if (m_random.isWithin(m_percentAll)) {
            return m_changes;
        }
        return m_random.isWithin(m_percentNone) ? 0 : m_random.upTo(m_changes);
    }

private:
    std::size_t m_changes;
    std::size_t m_percentAll;
    std::size_t m_percentNone;
    Random& m_random;
    std::map<std::size_t, std::size_t> m_drawn;
};

/// @return what a file that has grown may hold where nothing has been written.
std::string filling(std::size_t size, Random& random)
{
    return random.isWithin(50) ? random.garbage(size) : std::string(size, '\0');
}

/// Writes those sectors of a change that have arrived.
template <class HasArrived>
void writeSectors(std::string& bytes, const Operation& change, const HasArrived& hasArrived)
{
    const std::size_t end = change.offset + change.bytes.size();
    for (std::size_t from = change.offset; from < end;) {
        const std::size_t sector = from / StoredFile::SECTOR_SIZE;
        const std::size_t to = std::min(end, (sector + 1) * StoredFile::SECTOR_SIZE);
        if (hasArrived(sector)) {
            bytes.replace(from, to - from, change.bytes, from - change.offset, to - from);
        }
        from = to;
    }
}

}  // namespace

void StoredFile::sync()
{
    m_synced = bytes();
    m_unsynced.clear();
}

std::string StoredFile::bytes() const
{
    std::string bytes = m_synced;
    for (const Operation& change : m_unsynced) {
        bytes.resize(sizeAfter(change, bytes.size()));
        bytes.replace(change.offset, change.bytes.size(), change.bytes);
    }
    return bytes;
}

std::string StoredFile::afterPowerCut(Random& random) const
{
    const std::size_t room = largestSize(m_unsynced, m_synced.size());
    const std::string emptySectors = filling(room, random);
    std::string bytes = m_synced + emptySectors.substr(m_synced.size());
    ArrivedChanges arrived(m_unsynced.size(), random);
    const std::size_t changesOfSize = arrived.draw();
    for (std::size_t i = 0; i < m_unsynced.size(); ++i) {
        const Operation& change = m_unsynced[i];
        if (change.kind == Kind::WRITE) {
            writeSectors(bytes, change, [&](std::size_t sector) { return arrived.of(sector) > i; });
        } else if (changesOfSize > i) {
            // A file loses its end at once, as it gets its new size.
            bytes.replace(change.offset, room, emptySectors, change.offset, room);
        }
    }
    bytes.resize(sizeAfter(m_unsynced, changesOfSize, m_synced.size()));
    return bytes;
}
