// Power cuts: crashReplay STATES [EVERY [SEED]] records writers that change a database, cuts the
// power within each of their operations (or within every so many) and STATES times at random, and
// reads what is left. Ends with 1 if a state was refused, or read as neither the one before nor the
// one after, or otherwise than by SQLite alone; the first such state is left in the folder
// crashReplay.finding.

#include <sqlite3.h>
#include <stdlib.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <random>
#include <string>
#include <vector>

#include "replay/Image.h"
#include "replay/Random.h"
#include "replay/Reading.h"
#include "replay/Replay.h"
#include "replay/Writer.h"

namespace {

constexpr std::size_t STATES_OF_A_PLANTED_FAULT = 40;
constexpr std::size_t FINDINGS_SHOWN = 5;
constexpr const char* FINDING_FOLDER = "crashReplay.finding";

void report(const std::string& name, const Replay::Counts& counts, std::size_t findings)
{
    std::cout << name << ": " << counts.inOrder << " states in order, " << counts.atRandom
              << " at random, " << counts.inRecovery << " within a recovery, " << findings
              << " findings" << std::endl;
}

/// @return whether none of the writers' states was misread.
bool replayWriters(std::size_t states, std::size_t every, Random& random)
{
    const std::vector<Writer> writers = allWriters("FULL");
    bool isGood = true;
    for (const Writer& writer : writers) {
        const Recording recording = writer.record();
        Replay replay(readThroughService, random);
        replay.cutInOrder(recording, every);
        replay.cutAtRandom(recording, states / writers.size());
        report(writer.name(), replay.counts(), replay.findings().size());
        const std::vector<Replay::Finding>& findings = replay.findings();
        for (std::size_t i = 0; i < std::min(findings.size(), FINDINGS_SHOWN); ++i) {
            std::cout << "  " << findings[i].what << "\n";
        }
        if (isGood && !findings.empty()) {
            isGood = false;
            lay(findings.front().image, FINDING_FOLDER);
        }
    }
    return isGood;
}

/// @return whether a fault that was planted is found with each of the writers.
bool findsPlanted(const std::string& fault, const std::vector<Writer>& writers,
                  const Judge::Reader& reader, Random& random)
{
    std::size_t found = 0;
    for (const Writer& writer : writers) {
        Replay replay(reader, random);
        replay.cutAtRandom(writer.record(), STATES_OF_A_PLANTED_FAULT);
        if (!replay.findings().empty()) {
            ++found;
        }
    }
    std::cout << "planted: " << fault << ", found with " << found << " of " << writers.size()
              << " writers" << std::endl;
    return found == writers.size();
}

}  // namespace

int main(int argc, char** argv)
{
    const auto argument = [argc, argv](int index, unsigned long otherwise) {
        return argc > index ? std::strtoul(argv[index], nullptr, 10) : otherwise;
    };
    const unsigned long states = argument(1, 0);
    const unsigned long every = argument(2, 1);
    const auto seed = static_cast<std::uint32_t>(argument(3, std::random_device()()));
    if (states == 0 || every == 0 || argc > 4) {
        std::cerr << "usage: crashReplay STATES [EVERY [SEED]]\n";
        return 2;
    }
    if (access("/dev/shm", W_OK) == 0) {
        setenv("TMPDIR", "/dev/shm", 0);  // the files are written anew for each state
    }
    std::cout << "seed " << seed << std::endl;
    // The same seed makes the same journals, which have random numbers of SQLite's in them.
    sqlite3_test_control(SQLITE_TESTCTRL_PRNG_SEED, static_cast<int>(seed | 1U), nullptr);
    Random random(seed);
    const bool isGood = replayWriters(states, every, random);
    const bool findsFaults = findsPlanted("a writer that never waits for the disk",
                                          allWriters("OFF"), readThroughService, random) &&
                             findsPlanted("a reader that passes the journal over",
                                          allWriters("FULL"), readPastJournal, random);
    return isGood && findsFaults ? 0 : 1;
}
