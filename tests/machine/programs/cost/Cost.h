#pragma once

#include <cstddef>

/// How far a reader of a database goes before what it has cost is counted.
enum class Stage { MAIN, OPENED, TEXTS_OF_CODE, FAULT_TYPE, ALL_FAULT_TYPES, ALL_TEXTS };

/// The file is opened, and asked the four questions one after the other.
class CostReader {
public:
    CostReader() = default;
    virtual ~CostReader() = default;
    CostReader(const CostReader&) = delete;
    CostReader& operator=(const CostReader&) = delete;

    virtual bool open(const char* file) = 0;
    /// @return how many records it has made, of the question that leads to that stage.
    virtual std::size_t ask(Stage question) = 0;
};

/// The program's main(): FILE STAGE, with the stage as a number. Prints processor time in
/// nanoseconds, page faults, and KiB of private dirty and of shared memory.
int countCost(CostReader& reader, int argc, char** argv);
