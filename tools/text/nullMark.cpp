#include "nullMark.h"

namespace {

/// @return whether it is one backslash or several, and an N.
bool isLikeMark(std::string_view text)
{
    return text.size() > 1 && text.find_first_not_of('\\') == text.size() - 1 && text.back() == 'N';
}

}  // namespace

std::string withoutNullMark(std::string_view text)
{
    return (isLikeMark(text) ? "\\" : "") + std::string(text);
}

std::string textOfCell(std::string_view cell)
{
    return std::string(isLikeMark(cell) ? cell.substr(1) : cell);
}
