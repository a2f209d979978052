#pragma once

#include <cstddef>
#include <limits>
#include <string>

/// What standard output leads to.
struct Terminal {
    static constexpr std::size_t UNLIMITED = std::numeric_limits<std::size_t>::max();

    bool isTerminal;
    std::size_t width;  ///< UNLIMITED where nothing is cut to lines: in files and pipes
    bool hasColour;
};

/// The width is the environment's COLUMNS if that is a positive number, else the terminal's own.
/// There is colour on a terminal unless NO_COLOR is set and not empty, or TERM is "dumb".
Terminal standardOutput();

/// What stands out on a terminal with colour, and how.
enum class Look { PLAIN, STRONG, FAINT };

/// @return the text so that the terminal shows it like this.
std::string styled(Look look, const std::string& text, const Terminal& terminal);
