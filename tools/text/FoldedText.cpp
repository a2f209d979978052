#include "FoldedText.h"

#include <utf8proc.h>

#include <algorithm>
#include <cstdlib>
#include <memory>

#include "Utf8.h"

namespace {

/// The library folds well-formed texts only.
std::string wellFormed(std::string_view text)
{
    if (utf8::isValid(text)) {
        return std::string(text);
    }
    std::string replaced;
    while (!text.empty()) {
        const utf8::Character character = utf8::first(text);
        replaced += utf8::encoded(character.codePoint);
        text.remove_prefix(character.length);
    }
    return replaced;
}

std::string folded(std::string_view text)
{
    const std::string valid = wellFormed(text);
    utf8proc_uint8_t* result = nullptr;
    const utf8proc_ssize_t size = utf8proc_map(
        reinterpret_cast<const utf8proc_uint8_t*>(valid.data()),
        static_cast<utf8proc_ssize_t>(valid.size()), &result,
        static_cast<utf8proc_option_t>(UTF8PROC_CASEFOLD | UTF8PROC_COMPOSE | UTF8PROC_STABLE));
    const std::unique_ptr<utf8proc_uint8_t, decltype(&std::free)> owned(result, std::free);
    if (size < 0) {  // only for want of memory
        throw std::bad_alloc();
    }
    return {reinterpret_cast<const char*>(result), static_cast<std::size_t>(size)};
}

/// @return the number of bytes of the first letter, with the accents that follow it.
std::size_t letterLength(std::string_view text)
{
    utf8proc_int32_t state = 0;
    utf8::Character character = utf8::first(text);
    std::size_t length = character.length;
    while (length < text.size()) {
        const utf8::Character next = utf8::first(text.substr(length));
        if (utf8proc_grapheme_break_stateful(static_cast<utf8proc_int32_t>(character.codePoint),
                                             static_cast<utf8proc_int32_t>(next.codePoint),
                                             &state)) {
            break;
        }
        length += next.length;
        character = next;
    }
    return length;
}

/// A text folded letter by letter, which is the same as folded whole, and where each letter begins.
struct Letters {
    std::string folded;
    std::vector<std::size_t> foldedStarts;
    std::vector<std::size_t> starts;  ///< one more than letters: the end, too

    explicit Letters(std::string_view text)
    {
        std::size_t position = 0;
        while (position < text.size()) {
            const std::size_t length = letterLength(text.substr(position));
            starts.push_back(position);
            foldedStarts.push_back(folded.size());
            folded += ::folded(text.substr(position, length));
            position += length;
        }
        starts.push_back(position);
    }

    /// @return the number of the letter that a position of the folded text is in.
    std::size_t letterAt(std::size_t foldedPosition) const
    {
        const auto next =
            std::upper_bound(foldedStarts.begin(), foldedStarts.end(), foldedPosition);
        return static_cast<std::size_t>(next - foldedStarts.begin()) - 1;
    }
};

}  // namespace

FoldedText::FoldedText(std::string_view text) : m_folded(folded(text)) {}

FoldedText::Places FoldedText::placesOf(const std::vector<FoldedText>& words, std::string_view text)
{
    const Letters letters(text);
    Places found;
    for (const FoldedText& word : words) {
        const std::string& wordBytes = word.bytes();
        for (std::size_t start = letters.folded.find(wordBytes);
             !wordBytes.empty() && start != std::string::npos;
             start = letters.folded.find(wordBytes, start + wordBytes.size())) {
            found.emplace_back(letters.starts[letters.letterAt(start)],
                               letters.starts[letters.letterAt(start + wordBytes.size() - 1) + 1]);
        }
    }
    std::sort(found.begin(), found.end());
    Places merged;
    for (const auto& [begin, end] : found) {
        if (!merged.empty() && begin <= merged.back().second) {
            merged.back().second = std::max(merged.back().second, end);
        } else {
            merged.emplace_back(begin, end);
        }
    }
    return merged;
}
