#pragma once

#include <functional>
#include <set>
#include <string>

#include "Image.h"
#include "Reading.h"
#include "Recording.h"
#include "support/TempDir.h"

/// Lays the files that a power cut has left on a disk, reads them, and says whether that went well.
class Judge {
public:
    using Reader = std::function<Reading(const std::string& file)>;

    struct Verdict {
        std::string fault;   ///< what is wrong; empty if nothing is
        Recording recovery;  ///< what the reader has done to the files
    };

    explicit Judge(const Reader& reader) : m_reader(reader) {}

    /// @param legal  what the reader may find: one of these, as a whole.
    Verdict examine(const Image& image, const std::set<std::string>& legal) const;

private:
    std::string faultOf(const Reading& read, const Reading& plain,
                        const std::set<std::string>& legal) const;

    Reader m_reader;
    TempDir m_dir;
};
