#pragma once

#include <string>
#include <vector>

/// A kind of file that is made to do harm.
struct Attack {
    const char* name;
    std::vector<int> sizes;                           ///< of its files, growing
    void (*make)(const std::string& file, int size);  ///< makes one
};

using Attacks = std::vector<Attack>;

Attacks viewAttacks();
Attacks nameAttacks();
Attacks columnAttacks();
Attacks queryAttacks();
Attacks textAttacks();
Attacks endlessAttacks();
Attacks schemaAttacks();
Attacks virtualTableAttacks();
Attacks pageAttacks();
