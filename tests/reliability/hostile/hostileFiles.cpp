// Files made to do harm: hostileFiles SPEED [SIZES [NAME]] makes each kind whose name has NAME in
// it, in growing sizes (of each no more than SIZES), reads each file with all of DescriptionDb in a
// process of its own, on the main thread's stack and on small ones, and measures time, memory and
// stack; clocks run SPEED times as fast. Then honest files are made that are unusual too, and have
// to read as without bounds. Ends with 1 if a process died or took more than is promised, or if an
// honest file was misread; with a NAME, what was written to standard output is shown. The name
// "honest" stands for all honest files.

#include <string.h>
#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iomanip>
#include <iostream>
#include <string>
#include <vector>

#include "Attack.h"
#include "Trial.h"
#include "honestFiles.h"
#include "support/TempDir.h"

namespace {

constexpr long long MIB = 1024LL * 1024;

constexpr Stack SMALLEST = {"16 KiB", 16UL * 1024, 16UL * 1024};
constexpr std::array STACKS = {
    Stack{"main", 0, 0},
    Stack{"64 KiB", 64UL * 1024, 64UL * 1024},
    SMALLEST,
};

constexpr double PROMISED_SECONDS = 10;

/// What one step of SQLite's machine may take, within which the budget is not looked at.
#if defined(__arm__)
constexpr double SLACK_SECONDS = 20;  // in an emulator
#else
constexpr double SLACK_SECONDS = 2;
#endif

/// What the file may make SQLite take, with a row of a view that is made whole before anyone looks.
long long promisedBytes(long long fileSize)
{
    const long long text = std::clamp(fileSize * 3 / 2, 16LL * 1024, 16 * MIB);
    return std::max(128 * MIB, 64 * fileSize) + 100 * text;
}

/// Instead of a name: the honest files alone.
constexpr const char* HONEST = "honest";

struct Options {
    int speed;
    std::size_t sizes;
    std::string name;
};

/// What all files of a kind have come to.
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

std::string deathIn(const Outcome& outcome)
{
    if (outcome.signal == 0) {
        return "";
    }
    const auto call = static_cast<std::size_t>(outcome.count);
    return std::string("ended by ") + strsignal(outcome.signal) + " in " +
           (call < Outcome::NAMES.size() ? Outcome::NAMES[call] : "the end");
}

/// @return what breaks a promise; empty if nothing does.
std::string breachIn(const Outcome& outcome, long long fileSize, int speed)
{
    for (std::size_t i = 0; i < Outcome::NAMES.size(); ++i) {
        const Call& call = outcome.calls[i];
        if (call.seconds > PROMISED_SECONDS / speed + SLACK_SECONDS) {
            return std::to_string(call.seconds) + " s in " + Outcome::NAMES[i];
        }
        if (call.sqliteBytes > promisedBytes(fileSize)) {
            return std::to_string(call.sqliteBytes / MIB) + " MiB in " + Outcome::NAMES[i];
        }
    }
    return outcome.calls.front().result == 0 ? "" : "does not open";
}

void showLines(const std::string& file)
{
    std::ifstream lines(linesOf(file));
    for (std::string line; std::getline(lines, line);) {
        std::cout << "    " << line.substr(0, 150) << "\n";
    }
}

void print(const char* name, const Worst& worst)
{
    std::cout << std::fixed << std::setprecision(2) << std::setw(2) << worst.files << " files "
              << std::setw(5) << worst.seconds << " s " << std::setw(4) << worst.sqliteBytes / MIB
              << " MiB " << std::setw(4) << worst.residentBytes / MIB << " MiB resident "
              << std::setw(6) << worst.stackBytes << " B of stack: " << name << std::endl;
}

Worst tryAttack(const Attack& attack, const std::string& file, const Options& options)
{
    Worst worst;
    const std::size_t count = std::min(attack.sizes.size(), options.sizes);
    for (const int size : std::vector<int>(
             attack.sizes.begin(), attack.sizes.begin() + static_cast<std::ptrdiff_t>(count))) {
        std::filesystem::remove(file);
        attack.make(file, size);
        const auto fileSize = static_cast<long long>(std::filesystem::file_size(file));
        for (const Stack& stack : STACKS) {
            const Outcome outcome = tryFile(file, stack, options.speed);
            worst.take(outcome);
            const std::string death = deathIn(outcome);
            const std::string finding =
                death.empty() ? breachIn(outcome, fileSize, options.speed) : death;
            if (!finding.empty()) {
                ++worst.findings;
                std::cout << "FINDING " << attack.name << ", size " << size << ", on " << stack.name
                          << ": " << finding << std::endl;
            }
            if (!options.name.empty()) {
                std::cout << "  " << size << ", " << fileSize << " B, on " << stack.name << "\n";
                showLines(file);
            }
        }
        ++worst.files;
    }
    return worst;
}

int tryAttacks(const TempDir& dir, const Options& options)
{
    int files = 0;
    int findings = 0;
    for (const Attacks& attacks :
         {viewAttacks(), nameAttacks(), columnAttacks(), queryAttacks(), textAttacks(),
          endlessAttacks(), schemaAttacks(), virtualTableAttacks(), pageAttacks()}) {
        for (const Attack& attack : attacks) {
            if (std::string(attack.name).find(options.name) != std::string::npos) {
                const Worst worst = tryAttack(attack, dir.file("hostile.db"), options);
                print(attack.name, worst);
                files += worst.files;
                findings += worst.findings;
            }
        }
    }
    std::cout << files << " hostile files, " << findings << " findings" << std::endl;
    return findings;
}

/// @return whether a file reads as it does without bounds.
bool isRead(const HonestFile& honest, const std::string& file, const Options& options)
{
    std::filesystem::remove(file);
    honest.make(file);
    const std::uint64_t expected = checksumWithoutBounds(file);
    bool isGood = true;
    for (const Stack& stack : STACKS) {
        if (stack.querySize == SMALLEST.querySize && !honest.isReadOnSmallestStack) {
            continue;
        }
        const Outcome outcome = tryFile(file, stack, 1);
        if (outcome.signal != 0 || outcome.checksum != expected) {
            isGood = false;
            std::cout << "MISREAD " << honest.name << ", on " << stack.name << " "
                      << deathIn(outcome) << std::endl;
            showLines(file);
        } else if (!options.name.empty()) {
            std::cout << honest.name << ", on " << stack.name << ": " << outcome.stackBytes
                      << " B of stack" << std::endl;
        }
    }
    return isGood;
}

int tryHonestFiles(const TempDir& dir, const Options& options)
{
    int files = 0;
    int misread = 0;
    for (const HonestFile& honest : honestFiles()) {
        if (options.name == HONEST ||
            std::string(honest.name).find(options.name) != std::string::npos) {
            ++files;
            misread += isRead(honest, dir.file("honest.db"), options) ? 0 : 1;
        }
    }
    std::cout << files << " honest files, " << misread << " misread" << std::endl;
    return misread;
}

}  // namespace

int main(int argc, char** argv)
{
    const auto argument = [argc, argv](int index, unsigned long otherwise) {
        return argc > index ? std::strtoul(argv[index], nullptr, 10) : otherwise;
    };
    const Options options = {static_cast<int>(argument(1, 0)), argument(2, 99),
                             argc > 3 ? argv[3] : ""};
    if (options.speed < 1 || options.sizes < 1 || argc > 4) {
        std::cerr << "usage: hostileFiles SPEED [SIZES [NAME]]\n";
        return 2;
    }
    if (access("/dev/shm", W_OK) == 0) {
        setenv("TMPDIR", "/dev/shm", 0);  // the files are read once only
    }
    try {
        const TempDir dir;
        const int findings = options.name == HONEST ? 0 : tryAttacks(dir, options);
        return findings + tryHonestFiles(dir, options) == 0 ? 0 : 1;
    } catch (const std::exception& error) {
        std::cout << std::string(error.what()).substr(0, 1000) << std::endl;
        return 1;
    }
}
