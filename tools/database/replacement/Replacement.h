#pragma once

#include <string>

#include "Descriptor.h"
#include "ReplacedDatabase.h"

/// A database file that comes into the place of another whole or not at all: it is made beside it,
/// under a name of its own, and renamed over it. Whenever the process or the power ends, the old
/// file is there or the new one, and no journal that belongs to the other.
class Replacement {
public:
    /// Makes the new file, empty, and throws away what an attempt that was cut off has left. Waits
    /// a few seconds for another attempt.
    ///
    /// @param target  what is to be replaced, or made; of a link, the file that it leads to.
    /// @throws RefusedReplacement
    explicit Replacement(const std::string& target);

    /// Removes the new file if it has not been put in place.
    ~Replacement();
    Replacement(const Replacement&) = delete;
    Replacement& operator=(const Replacement&) = delete;

    /// @return of the new file, until it is in place.
    const std::string& path() const { return m_path; }

    /// @return the path that the new file will have.
    const std::string& target() const { return m_target; }

    ReplacedDatabase& replaced() { return m_replaced; }

    /// Fills the new file with a copy of a database that nobody is changing.
    ///
    /// @throws RefusedReplacement
    void copyFrom(const std::string& file);

    /// Puts the new file in place; once this returns, it is there for good.
    ///
    /// @throws RefusedReplacement
    void putInPlace();

private:
    void takeOwnerAndMode();
    void flush();
    void flushFolder() const;
    void removeLeftovers() const;

    std::string m_target;
    std::string m_path;
    ReplacedDatabase m_replaced;
    Descriptor m_file;  ///< locked, so that of several attempts one is at work
    bool m_isInPlace = false;
};
