#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// A text in which letter case and the ways to write an accent do not count: Unicode's case folding
/// and composition. Accents count.
class FoldedText {
public:
    explicit FoldedText(std::string_view text);

    /// @param word  folded.
    bool contains(std::string_view word) const { return m_folded.find(word) != std::string::npos; }

    const std::string& bytes() const { return m_folded; }

    /// Where words stand in a text that was not folded.
    using Places = std::vector<std::pair<std::size_t, std::size_t>>;  ///< begin and end, in bytes

    /// @param words  folded.
    /// @return all places, in their order, none within or beside another.
    static Places placesOf(const std::vector<FoldedText>& words, std::string_view text);

private:
    std::string m_folded;
};
