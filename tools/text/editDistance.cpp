#include "editDistance.h"

#include <algorithm>
#include <string>
#include <vector>

#include "Utf8.h"

namespace {

std::u32string charactersOf(std::string_view text)
{
    std::u32string characters;
    while (!text.empty()) {
        const utf8::Character character = utf8::first(text);
        characters += character.codePoint;
        text.remove_prefix(character.length);
    }
    return characters;
}

using Row = std::vector<std::size_t>;

/// The distances of the first i characters of one text from all beginnings of the other, by those
/// of i-1 and i-2.
Row nextRow(const std::u32string& one, const std::u32string& other, std::size_t i,
            const Row& before, const Row& twoBefore)
{
    Row row(other.size() + 1);
    row[0] = i;
    for (std::size_t j = 1; j <= other.size(); ++j) {
        const std::size_t exchanged = before[j - 1] + (one[i - 1] == other[j - 1] ? 0 : 1);
        row[j] = std::min({before[j] + 1, row[j - 1] + 1, exchanged});
        if (i > 1 && j > 1 && one[i - 1] == other[j - 2] && one[i - 2] == other[j - 1]) {
            row[j] = std::min(row[j], twoBefore[j - 2] + 1);
        }
    }
    return row;
}

}  // namespace

std::size_t editDistance(std::string_view one, std::string_view other, std::size_t most)
{
    const std::u32string from = charactersOf(one);
    const std::u32string to = charactersOf(other);
    if (std::max(from.size(), to.size()) - std::min(from.size(), to.size()) > most) {
        return most + 1;
    }
    Row twoBefore;
    Row before(to.size() + 1);
    for (std::size_t j = 0; j <= to.size(); ++j) {
        before[j] = j;
    }
    for (std::size_t i = 1; i <= from.size(); ++i) {
        Row row = nextRow(from, to, i, before, twoBefore);
        twoBefore = std::move(before);
        before = std::move(row);
    }
    return before.back();
}
