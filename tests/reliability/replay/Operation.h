#pragma once

#include <cstddef>
#include <string>

/// One change of a folder's files, or one wait for the disk.
struct Operation {
    enum class Kind { CREATE, WRITE, TRUNCATE, REMOVE, SYNC, SYNC_FOLDER };

    Kind kind;
    std::string file;        ///< its name; empty for SYNC_FOLDER
    std::size_t offset = 0;  ///< of WRITE; for TRUNCATE the new size
    std::string bytes;       ///< of WRITE
};
