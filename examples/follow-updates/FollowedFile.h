#pragma once

#include <sys/stat.h>
#include <zav/DescriptionDb.h>

#include <string>

/// Keeps a database open, and goes over to the new file when it is replaced.
class FollowedFile {
public:
    explicit FollowedFile(const std::string& path) : m_path(path) {}

    /// Opens the file, or the one that has been put in its place; to be called before what belongs
    /// together is asked.
    ///
    /// @return whether another file is open than before.
    bool follow()
    {
        const Identity current = identity();
        // Where there is no file at the moment, the open one is still good.
        if (!current.isKnown || current == m_opened) {
            return false;
        }
        return open();
    }

private:
    /// As long as a file is open, no other one can have its number.
    struct Identity {
        bool isKnown;
        dev_t device;
        ino_t number;

        bool operator==(const Identity& other) const
        {
            return isKnown == other.isKnown && device == other.device && number == other.number;
        }
    };

    Identity identity() const
    {
        struct stat status = {};
        const bool isKnown = stat(m_path.c_str(), &status) == 0;
        return {isKnown, status.st_dev, status.st_ino};
    }

    bool open()
    {
        DescriptionDb& db = *DescriptionDb::getInstance();
        Identity before = {};
        do {
            before = identity();
            db.closeDb();
            m_opened = Identity{};
            if (db.openDb(m_path, true) != 0) {
                return false;  // the next call tries again
            }
        } while (!(identity() == before));  // replaced between the two: which of them is open?
        m_opened = before;
        return true;
    }

    std::string m_path;
    Identity m_opened = {};
};
