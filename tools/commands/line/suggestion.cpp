#include "suggestion.h"

#include "text/editDistance.h"
#include "text/nearest.h"

std::string suggestion(const std::string& word, const std::vector<std::string>& candidates)
{
    constexpr std::size_t MOST_EDITS = 2;
    if (candidates.empty()) {
        return "";
    }
    const std::string& candidate = nearest(word, candidates);
    const std::size_t edits = editDistance(word, candidate, MOST_EDITS);
    return edits <= MOST_EDITS && edits < candidate.size() / 2 ? "; did you mean " + candidate + "?"
                                                               : "";
}
