#include "formatted.h"

#include <fmt/format.h>

std::string formattedValues(fmt::string_view text, fmt::format_args values)
{
    return fmt::vformat(text, values);
}
