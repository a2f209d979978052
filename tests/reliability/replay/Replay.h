#pragma once

#include <cstddef>
#include <set>
#include <string>
#include <vector>

#include "Disk.h"
#include "Image.h"
#include "Judge.h"
#include "Random.h"
#include "Recording.h"

/// Cuts the power while a program changes a database, and has what is left judged. Where the reader
/// then changes the files itself, to recover what it finds, the power is cut in the midst of that,
/// too: once at random for each state.
class Replay {
public:
    struct Finding {
        std::string what;
        Image image;  ///< the files that were read
    };

    /// How many states have been judged.
    struct Counts {
        std::size_t inOrder = 0;
        std::size_t atRandom = 0;
        std::size_t inRecovery = 0;  ///< of the reader, in order and at random
    };

    Replay(const Judge::Reader& reader, Random& random) : m_judge(reader), m_random(random) {}

    /// Cuts after each operation, and within each write at each sector; all before has arrived. The
    /// longest recovery that follows is cut in the same way.
    /// @param every  1 for all these states, 2 for every second, ...
    void cutInOrder(const Recording& recording, std::size_t every);

    /// Cuts at random, half of the times about the end of a transaction; of what was not synced,
    /// sectors have arrived or not, at random.
    void cutAtRandom(const Recording& recording, std::size_t states) { cut(recording, states, 0); }

    const Counts& counts() const { return m_counts; }
    const std::vector<Finding>& findings() const { return m_findings; }

private:
    void cutEach(const Recording& recording, std::size_t every, std::size_t depth);
    void cut(const Recording& recording, std::size_t states, std::size_t depth);
    std::size_t drawCut(const Recording& recording);
    Image remains(const Disk& disk);
    void judge(const Image& image, const std::set<std::string>& legal, const std::string& where,
               std::size_t depth);

    Judge m_judge;
    Random& m_random;
    Counts m_counts;
    Recording m_longestRecovery;
    std::vector<Finding> m_findings;
};
