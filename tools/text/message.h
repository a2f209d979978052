#pragma once

#include <string>

/// Writes one line for the user to standard error, safe to show on a terminal.
void printMessage(const std::string& text);
