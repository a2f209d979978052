#include "placeholders.h"
#include "text/formatted.h"

#include <algorithm>
#include <vector>

namespace {

using std::string_view;

constexpr const char* DIGITS = "0123456789";

/// @return the number of characters at a position that are among those given.
std::size_t run(string_view text, std::size_t position, string_view characters)
{
    const std::size_t end = std::min(text.find_first_not_of(characters, position), text.size());
    return end - std::min(position, text.size());
}

/// @return the number of characters of a width or precision: digits or an asterisk.
std::size_t number(string_view text, std::size_t position)
{
    return text.substr(std::min(position, text.size()), 1) == "*" ? 1 : run(text, position, DIGITS);
}

/// @return the length of printf's conversion at the beginning of a text; 0: there is none.
std::size_t conversion(string_view text)
{
    std::size_t end = 1;  // after the percent sign
    const std::size_t argument = run(text, end, DIGITS);
    if (argument > 0 && text.substr(end + argument, 1) == "$") {
        end += argument + 1;
    }
    end += run(text, end, "-+#0'");
    end += number(text, end);
    if (text.substr(std::min(end, text.size()), 1) == ".") {
        end += 1;
        end += number(text, end);
    }
    end += std::min<std::size_t>(run(text, end, "hlLqjzt"), 2);
    return end < text.size() &&
                   string_view("diouxXeEfFgGaAcspn").find(text[end]) != string_view::npos
               ? end + 1
               : 0;
}

/// @return the length of %1 to %99 at the beginning of a text; 0: there is none.
std::size_t numberedLength(string_view text)
{
    constexpr std::size_t MOST_DIGITS = 2;
    const std::size_t digits = std::min(run(text, 1, DIGITS), MOST_DIGITS);
    return digits > 0 && text[1] != '0' ? 1 + digits : 0;
}

/// @return the length of {0} or {name} at the beginning of a text; 0: there is none.
std::size_t bracedLength(string_view text)
{
    constexpr const char* LETTERS =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz_0123456789";
    const std::size_t digits = run(text, 1, DIGITS);
    const std::size_t letters = run(text, 1, LETTERS);
    const bool isName = letters > 0 && (digits == 0 || digits == letters);
    return isName && text.substr(1 + letters, 1) == "}" ? letters + 2 : 0;
}

std::size_t placeholder(string_view text)
{
    if (text.front() == '{') {
        return bracedLength(text);
    }
    const std::size_t length = conversion(text);
    return length > 0 ? length : numberedLength(text);
}

}  // namespace

std::string placeholdersIn(string_view text)
{
    const bool hasAny = text.find('%') != string_view::npos || text.find('{') != string_view::npos;
    if (!hasAny) {
        return "";  // as most texts; looking for one of several characters takes far longer
    }
    std::vector<string_view> found;
    for (std::size_t start = text.find_first_of("%{"); start != string_view::npos;
         start = text.find_first_of("%{", start)) {
        const string_view rest = text.substr(start);
        const std::size_t length = placeholder(rest);
        if (length > 0) {
            found.push_back(rest.substr(0, length));
        }
        const bool isPercentSign = rest.substr(0, 2) == "%%";
        start += isPercentSign ? 2 : std::max<std::size_t>(length, 1);
    }
    std::sort(found.begin(), found.end());
    return listed(found, " ");
}
