#pragma once

#include <array>
#include <cstdint>
#include <string>

/// Where the calls run.
struct Stack {
    const char* name;
    std::size_t openingSize;  ///< of openDb(), 0: the main thread
    std::size_t querySize;    ///< of all other calls
};

/// What one call into the service took.
struct Call {
    int result;
    double seconds;         ///< of the processor
    long long sqliteBytes;  ///< SQLite's high-water mark
};

struct Outcome {
    static constexpr std::array NAMES = {"openDb",
                                         "getFaultTypeDefTbl",
                                         "getFaultTypeDef",
                                         "getDescriptionsTbl",
                                         "getDescriptionsByFC",
                                         "closeDb"};

    std::array<Call, NAMES.size()> calls;
    int count;                ///< of the calls that have returned
    std::size_t stackBytes;   ///< used at the most
    std::uint64_t checksum;   ///< of all records
    int signal;               ///< that has ended the process; 0: none has
    long long residentBytes;  ///< of the process at its largest
};

/// Opens a file, asks all that can be asked, and closes it; in a process of its own.
///
/// @param clockSpeed  how many times as fast the clocks of that process run.
Outcome tryFile(const std::string& file, const Stack& stack, int clockSpeed);

/// @return the file to which the last trial of a file has written its standard output.
std::string linesOf(const std::string& file);

/// @return the checksum of what the same questions come to without any bounds.
std::uint64_t checksumWithoutBounds(const std::string& file);
