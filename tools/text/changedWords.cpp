#include "changedWords.h"

#include <algorithm>
#include <string_view>

namespace {

using Words = std::vector<std::string_view>;
using Flags = std::vector<bool>;

/// Words, and what stands between them.
Words wordsOf(std::string_view text)
{
    const auto isBlank = [](char character) { return character == ' ' || character == '\n'; };
    Words words;
    while (!text.empty()) {
        const bool isGap = isBlank(text.front());
        std::size_t length = 1;
        while (length < text.size() && isBlank(text[length]) == isGap) {
            ++length;
        }
        words.push_back(text.substr(0, length));
        text.remove_prefix(length);
    }
    return words;
}

/// Marks the words of a longest common sequence as not changed.
void markShared(const Words& before, const Words& after, Flags& beforeChanged, Flags& afterChanged)
{
    const std::size_t rows = before.size();
    const std::size_t columns = after.size();
    // Of the words from i and j on.
    std::vector<std::vector<std::size_t>> length(rows + 1, std::vector<std::size_t>(columns + 1));
    for (std::size_t i = rows; i-- > 0;) {
        for (std::size_t j = columns; j-- > 0;) {
            length[i][j] = before[i] == after[j] ? length[i + 1][j + 1] + 1
                                                 : std::max(length[i + 1][j], length[i][j + 1]);
        }
    }
    for (std::size_t i = 0, j = 0; i < rows && j < columns;) {
        if (before[i] == after[j]) {
            beforeChanged[i++] = false;
            afterChanged[j++] = false;
        } else if (length[i + 1][j] >= length[i][j + 1]) {
            ++i;
        } else {
            ++j;
        }
    }
}

std::vector<WordRun> runsOf(const Words& words, const Flags& changed)
{
    std::vector<WordRun> runs;
    for (std::size_t i = 0; i < words.size(); ++i) {
        if (runs.empty() || runs.back().isChanged != changed[i]) {
            runs.push_back({"", changed[i]});
        }
        runs.back().text += words[i];
    }
    return runs;
}

}  // namespace

WordRuns changedWords(const std::string& before, const std::string& after)
{
    constexpr std::size_t MOST_WORDS = 2000;  // the comparison takes the square of that
    const Words beforeWords = wordsOf(before);
    const Words afterWords = wordsOf(after);
    Flags beforeChanged(beforeWords.size(), true);
    Flags afterChanged(afterWords.size(), true);
    if (std::max(beforeWords.size(), afterWords.size()) <= MOST_WORDS) {
        markShared(beforeWords, afterWords, beforeChanged, afterChanged);
    }
    return {runsOf(beforeWords, beforeChanged), runsOf(afterWords, afterChanged)};
}
