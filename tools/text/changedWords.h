#pragma once

#include <string>
#include <vector>

/// A piece of a text, and whether another text lacks it.
struct WordRun {
    std::string text;
    bool isChanged;
};

struct WordRuns {
    std::vector<WordRun> before;
    std::vector<WordRun> after;
};

/// @return both texts, cut where words that they share begin or end; put together again, the pieces
///         are the texts.
WordRuns changedWords(const std::string& before, const std::string& after);
