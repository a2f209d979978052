#include "nearestAlias.h"

#include <algorithm>

#include "text/lowerCase.h"
#include "text/nearest.h"

std::string nearestAlias(const std::string& word, const std::vector<std::string>& aliases)
{
    constexpr std::size_t LONGEST = 100;  // the comparison takes the product of the lengths
    std::vector<std::string> candidates;
    std::vector<std::string> lower;
    for (const std::string& alias : aliases) {
        if (!alias.empty() && alias.size() <= LONGEST) {
            candidates.push_back(alias);
            lower.push_back(lowerCase(alias));
        }
    }
    if (candidates.empty()) {
        return "";
    }
    const std::string& found = nearest(lowerCase(word.substr(0, LONGEST)), lower);
    const auto position = static_cast<std::size_t>(&found - lower.data());
    return "; the nearest is " + candidates[position];
}
