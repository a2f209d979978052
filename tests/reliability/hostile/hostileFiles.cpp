// Files made to do harm: hostileFiles [SPEED [NAME]] makes each kind in growing sizes, reads each
// with all of DescriptionDb in a process of its own, on the main thread's stack and on small ones,
// and measures time, memory and stack. Clocks run SPEED times as fast. Ends with 1 if a process
// died, or took more than is promised.

#include <signal.h>
#include <string.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iomanip>
#include <iostream>
#include <string>
#include <utility>

#include "Attack.h"
#include "Trial.h"
#include "support/QuickClock.h"
#include "support/TempDir.h"

namespace {

constexpr long long MIB = 1024 * 1024;

constexpr std::array STACKS = {
    Stack{"main", 0, 0},
    Stack{"64 KiB", 64 * 1024, 64 * 1024},
    Stack{"16 KiB", 16 * 1024, 16 * 1024},
    Stack{"main, then 16 KiB", 0, 16 * 1024},
};

int g_clockSpeed = 1;
bool g_isVerbose = false;

constexpr double PROMISED_SECONDS = 10;
constexpr double SLACK_SECONDS = 2;

long long promisedBytes(long long fileSize)
{
    return std::max(128 * MIB, 64 * fileSize);
}

struct Worst {
    double seconds = 0;
    long long sqliteBytes = 0;
    long long residentBytes = 0;
    std::size_t stackBytes = 0;
    int files = 0;
    int findings = 0;

    void take(const Outcome& outcome)
    {
        for (const Call& call : outcome.calls) {
            seconds = std::max(seconds, call.seconds);
            sqliteBytes = std::max(sqliteBytes, call.sqliteBytes);
        }
        residentBytes = std::max(residentBytes, outcome.residentBytes);
        stackBytes = std::max(stackBytes, outcome.stackBytes);
    }
};

/// @return what is wrong with an outcome; empty if nothing is.
std::string findingIn(const Outcome& outcome, long long fileSize)
{
    const auto where = [&](std::size_t call) {
        return call < Outcome::NAMES.size() ? Outcome::NAMES[call] : "the end";
    };
    if (outcome.signal != 0) {
        return std::string("ended by ") + strsignal(outcome.signal) + " in " +
               where(static_cast<std::size_t>(outcome.count));
    }
    for (std::size_t i = 0; i < Outcome::NAMES.size(); ++i) {
        const Call& call = outcome.calls[i];
        if (call.seconds > PROMISED_SECONDS / g_clockSpeed + SLACK_SECONDS) {
            return std::to_string(call.seconds) + " s in " + where(i);
        }
        if (call.sqliteBytes > promisedBytes(fileSize)) {
            return std::to_string(call.sqliteBytes / MIB) + " MiB in " + where(i);
        }
    }
    if (outcome.calls.front().result != 0) {
        return "does not open";
    }
    return "";
}

void print(const char* name, const Worst& worst)
{
    std::cout << std::fixed << std::setprecision(2) << std::setw(3) << worst.files << " "
              << std::setw(6) << worst.seconds << " s " << std::setw(5) << worst.sqliteBytes / MIB
              << " MiB " << std::setw(5) << worst.residentBytes / MIB << " MiB RSS " << std::setw(7)
              << worst.stackBytes << " B stack  " << name
              << (worst.findings > 0 ? "  " + std::to_string(worst.findings) + " FINDINGS" : "")
              << std::endl;
}

Worst tryAttack(const Attack& attack, const TempDir& dir)
{
    Worst worst;
    for (const int size : attack.sizes) {
        const std::string file = dir.file("hostile.db");
        attack.make(file, size);
        const auto fileSize = static_cast<long long>(std::filesystem::file_size(file));
        for (const Stack& stack : STACKS) {
            const Outcome outcome = tryFile(file, stack, g_clockSpeed);
            worst.take(outcome);
            if (g_isVerbose) {
                std::cout << "  " << size << " " << stack.name << " " << fileSize << " B:";
                for (const Call& call : outcome.calls) {
                    std::cout << " " << call.result;
                }
                std::cout << "\n";
                std::ifstream lines(file + ".lines");
                for (std::string line; std::getline(lines, line);) {
                    std::cout << "      " << line.substr(0, 150) << "\n";
                }
            }
            const std::string finding = findingIn(outcome, fileSize);
            if (!finding.empty()) {
                ++worst.findings;
                std::cout << "FINDING " << attack.name << ", size " << size << ", on " << stack.name
                          << ": " << finding << std::endl;
            }
        }
        ++worst.files;
        std::filesystem::remove(file);
    }
    return worst;
}

}  // namespace

int main(int argc, char** argv)
{
    g_clockSpeed = argc > 1 ? std::atoi(argv[1]) : 1;
    g_isVerbose = argc > 4;
    int first = argc > 3 ? std::atoi(argv[3]) : 0;
    const std::string only = argc > 2 ? argv[2] : "";
    if (access("/dev/shm", W_OK) == 0) {
        setenv("TMPDIR", "/dev/shm", 0);
    }
    const TempDir dir;
    int findings = 0;
    int files = 0;
    for (const auto& attacks :
         {viewAttacks(), nameAttacks(), columnAttacks(), queryAttacks(), textAttacks(),
          endlessAttacks(), schemaAttacks(), virtualTableAttacks(), pageAttacks()}) {
        if (first > 0) { --first; continue; }
        for (const Attack& attack : attacks) {
            if (std::string(attack.name).find(only) == std::string::npos) {
                continue;
            }
            try {
                const Worst worst = tryAttack(attack, dir);
                print(attack.name, worst);
                findings += worst.findings;
                files += worst.files;
            } catch (const std::exception& error) {
                std::cout << "NOT MADE " << attack.name << ": "
                          << std::string(error.what()).substr(0, 200) << std::endl;
                std::filesystem::remove(dir.file("hostile.db"));
            }
        }
    }
    std::cout << files << " files, " << findings << " findings\n";
    return findings == 0 ? 0 : 1;
}
