#pragma once

#include <optional>
#include <string>

#include "LockedFile.h"

/// The file that is to be replaced, if there is one, and what lies beside it. SQLite would apply a
/// journal that stays there to the new file, and destroy it.
class ReplacedDatabase {
public:
    explicit ReplacedDatabase(const std::string& file) : m_file(file) {}

    bool exists() const;

    /// Lets SQLite bring the file to its last committed state, if a writer has died: any reader
    /// with the right to write does it, too.
    ///
    /// @throws RefusedReplacement
    void settle();

    /// Removes what lies beside the file and keeps it away: a file in WAL mode leaves it, and no
    /// other process can begin to write as long as this object lives.
    ///
    /// @throws RefusedReplacement if others have the file in use for more than a few seconds.
    void hold();

private:
    bool run(const char* sql, const Patience& patience) const;
    bool tryToHold(const Patience& patience);
    void leaveWalMode(const Patience& patience);
    void refuseSuperJournal() const;
    void removeJournals() const;

    std::string m_file;
    bool m_isDamaged = false;  ///< SQLite cannot do anything about it
    std::optional<LockedFile> m_lock;
};
