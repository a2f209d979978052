#pragma once

#include <cstddef>
#include <set>
#include <string>
#include <vector>

#include "Image.h"
#include "Operation.h"

/// What a reader finds before and after a transaction; the same for one that was given up.
struct Transaction {
    std::size_t begin;  ///< how many operations were made before it
    std::size_t end;    ///< how many had been made when it was over
    std::string before;
    std::string after;
};

/// All that a program has done to the files of a database.
struct Recording {
    Image start;  ///< the files before
    std::vector<Operation> operations;
    std::vector<Transaction> transactions;  ///< at least one

    /// @param count       how many operations were made before the power was cut.
    /// @param mayRestore  whether a file that was removed may be back.
    /// @return what a reader may find then, always whole.
    std::set<std::string> legalTexts(std::size_t count, bool mayRestore) const;
};
