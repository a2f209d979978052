#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "Operation.h"
#include "Random.h"

/// A file as the disk has it: what was synced is there; of what was written since, each sector is
/// there or not, whatever the order of the writes.
class StoredFile {
public:
    static constexpr std::size_t SECTOR_SIZE = 512;

    StoredFile() = default;
    explicit StoredFile(const std::string& bytes) : m_synced(bytes) {}

    /// @param change  a WRITE or a TRUNCATE.
    void change(const Operation& change) { m_unsynced.push_back(change); }
    void sync();

    /// @return the bytes as programs see them.
    std::string bytes() const;

    /// @return the bytes after a power cut: each sector as it was at some moment since the sync,
    /// the
    ///         size, and with it what a TRUNCATE leaves, as at another moment; where no sector has
    ///         arrived, zeros or garbage.
    std::string afterPowerCut(Random& random) const;

private:
    std::string m_synced;
    std::vector<Operation> m_unsynced;
};
