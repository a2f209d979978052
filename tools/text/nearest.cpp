#include "nearest.h"

#include <algorithm>
#include <limits>

#include "editDistance.h"

const std::string& nearest(const std::string& word, const std::vector<std::string>& candidates)
{
    constexpr std::size_t ANY = std::numeric_limits<std::size_t>::max() - 1;
    return *std::min_element(candidates.begin(), candidates.end(),
                             [&](const std::string& one, const std::string& other) {
                                 return editDistance(word, one, ANY) <
                                        editDistance(word, other, ANY);
                             });
}
