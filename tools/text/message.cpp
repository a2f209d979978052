#include "message.h"

#include <iostream>

#include "TextWidth.h"

void printMessage(const std::string& text)
{
    std::cerr << "zav: " << printableLine(text) << '\n';
}
