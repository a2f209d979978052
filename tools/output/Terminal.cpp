#include "Terminal.h"

#include <fmt/color.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <string_view>

namespace {

constexpr std::size_t DEFAULT_WIDTH = 80;
constexpr std::size_t SMALLEST_WIDTH = 20;

std::string_view environment(const char* name)
{
    const char* value = std::getenv(name);
    return value != nullptr ? value : "";
}

/// @return 0 if the environment does not say.
std::size_t widthByEnvironment()
{
    const std::string_view columns = environment("COLUMNS");
    std::size_t width = 0;
    const char* end = columns.data() + columns.size();
    const auto [read, error] = std::from_chars(columns.data(), end, width);
    return error == std::errc() && read == end ? width : 0;
}

std::size_t widthByTerminal()
{
    winsize size = {};
    const bool isKnown = ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
    return isKnown ? size.ws_col : DEFAULT_WIDTH;
}

std::size_t outputWidth(bool isTerminal)
{
    const std::size_t widthFromEnvironment = widthByEnvironment();
    if (widthFromEnvironment == 0 && !isTerminal) {
        return Terminal::UNLIMITED;
    }
    return std::max(widthFromEnvironment != 0 ? widthFromEnvironment : widthByTerminal(),
                    SMALLEST_WIDTH);
}

}  // namespace

Terminal standardOutput()
{
    const bool isTerminal = isatty(STDOUT_FILENO) == 1;
    const bool wantsColour = environment("NO_COLOR").empty() && environment("TERM") != "dumb";
    return {isTerminal, outputWidth(isTerminal), isTerminal && wantsColour};
}

std::string styled(Look look, const std::string& text, const Terminal& terminal)
{
    if (!terminal.hasColour || look == Look::PLAIN) {
        return text;
    }
    return fmt::format(look == Look::STRONG ? fmt::emphasis::bold : fmt::emphasis::faint, "{}",
                       text);
}
