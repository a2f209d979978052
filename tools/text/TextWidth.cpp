#include "TextWidth.h"

#include <wchar.h>

#include <algorithm>
#include <clocale>

#include "Utf8.h"
#include "formatted.h"

namespace {

std::string escape(char32_t codePoint)
{
    const auto number = static_cast<unsigned>(codePoint);
    if (number < 0x80) {
        return formatted("\\x{:02x}", number);
    }
    return number < 0x10000 ? formatted("\\u{:04x}", number) : formatted("\\U{:08x}", number);
}

std::string printableExcept(std::string_view text, std::string_view kept)
{
    std::string shown;
    for (;;) {
        const std::size_t harmless = utf8::harmlessLength(text);
        shown += text.substr(0, harmless);
        text.remove_prefix(harmless);
        if (text.empty()) {
            return shown;
        }
        const utf8::Character character = utf8::first(text);
        const std::string_view bytes = text.substr(0, character.length);
        if (!character.valid) {
            shown += "\uFFFD";
        } else if (utf8::isHazard(character.codePoint) &&
                   kept.find(bytes) == std::string_view::npos) {
            shown += escape(character.codePoint);
        } else {
            shown += bytes;
        }
        text.remove_prefix(character.length);
    }
}

std::size_t widthOf(char32_t codePoint)
{
    constexpr char32_t FIRST_ACCENT = 0x300;
    if (codePoint < FIRST_ACCENT) {
        return 1;
    }
    const int width = wcwidth(static_cast<wchar_t>(codePoint));
    return width < 0 ? 1 : static_cast<std::size_t>(width);  // -1: the locale does not know it
}

std::vector<std::string_view> split(std::string_view text, char separator)
{
    std::vector<std::string_view> parts;
    for (std::size_t end = text.find(separator); end != std::string_view::npos;
         end = text.find(separator)) {
        parts.push_back(text.substr(0, end));
        text.remove_prefix(end + 1);
    }
    parts.push_back(text);
    return parts;
}

/// The number of bytes at the beginning of a text that fit; never between a letter and its accent.
std::size_t fittingBytes(std::string_view text, std::size_t width)
{
    std::size_t bytes = 0;
    std::size_t used = 0;
    while (bytes < text.size()) {
        const utf8::Character character = utf8::first(text.substr(bytes));
        used += widthOf(character.codePoint);
        if (used > width) {
            break;
        }
        bytes += character.length;
    }
    return bytes;
}

/// Moves whole lines off the front of a word that is wider than a line.
std::string_view breakWord(std::string_view word, std::size_t width,
                           std::vector<std::string>& wrapped)
{
    std::size_t remaining = displayWidth(word);
    while (remaining > width) {
        const std::string_view part = word.substr(0, fittingBytes(word, width));
        wrapped.emplace_back(part);
        remaining -= displayWidth(part);
        word.remove_prefix(part.size());
    }
    return word;
}

void wrapLine(std::string_view line, std::size_t width, std::vector<std::string>& wrapped)
{
    const std::vector<std::string_view> words = split(line, ' ');
    std::string current(breakWord(words.front(), width, wrapped));
    std::size_t currentWidth = displayWidth(current);
    for (auto word = words.begin() + 1; word != words.end(); ++word) {
        const std::size_t wordWidth = displayWidth(*word);
        if (wordWidth < width && currentWidth < width - wordWidth) {
            current.append(" ").append(*word);
            currentWidth += 1 + wordWidth;
        } else {
            wrapped.push_back(current);
            current = breakWord(*word, width, wrapped);
            currentWidth = displayWidth(current);
        }
    }
    wrapped.push_back(current);
}

}  // namespace

std::string printable(std::string_view text)
{
    return printableExcept(text, "\n");
}

std::string printableLine(std::string_view text)
{
    return printableExcept(text, "");
}

void initTextWidth()
{
    // Widths only: numbers and messages stay as they are. Without this locale every character that
    // is not ASCII counts as one column, which is right for all but the rarest here.
    (void)std::setlocale(LC_CTYPE, "C.UTF-8");
}

std::size_t displayWidth(std::string_view text)
{
    std::size_t width = 0;
    for (;;) {
        const std::size_t plain = utf8::plainLength(text);
        width += plain;
        text.remove_prefix(plain);
        if (text.empty()) {
            return width;
        }
        const utf8::Character character = utf8::first(text);
        width += widthOf(character.codePoint);
        text.remove_prefix(character.length);
    }
}

std::vector<std::string> wrap(std::string_view text, std::size_t width)
{
    std::vector<std::string> wrapped;
    for (const std::string_view line : split(text, '\n')) {
        wrapLine(line, width, wrapped);
    }
    return wrapped;
}

std::size_t widestWord(std::string_view text)
{
    std::size_t widest = 0;
    for (const std::string_view line : split(text, '\n')) {
        for (const std::string_view word : split(line, ' ')) {
            widest = std::max(widest, displayWidth(word));
        }
    }
    return widest;
}

std::size_t widestLine(std::string_view text)
{
    if (text.find('\n') == std::string_view::npos) {
        return displayWidth(text);
    }
    std::size_t widest = 0;
    for (const std::string_view line : split(text, '\n')) {
        widest = std::max(widest, displayWidth(line));
    }
    return widest;
}
