#pragma once

#include <stdexcept>

/// The file could not be opened, or a query failed. The text is complete but for the program's
/// name.
class UnreadableFile : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// A query of a file that could be opened failed. The text is SQLite's alone.
class FailedQuery : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Several rows answer a lookup that delivers one.
class AmbiguousCode : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// A file was not put in the place of another. The text is complete but for the program's name.
class RefusedReplacement : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// ... since the new one is not fit for it.
class UnfitFile : public RefusedReplacement {
public:
    using RefusedReplacement::RefusedReplacement;
};
