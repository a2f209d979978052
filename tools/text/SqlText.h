#pragma once

#include <string>

/// @return the text with each single quote doubled.
std::string doubledQuotes(const std::string& text);

/// @return the bytes of a text, two digits for each.
std::string hexadecimal(const std::string& text);

/// Makes a text ready for the place between the single quotes of a statement.
///
/// Quotes are doubled. A text that would not come through a terminal and the sqlite3 command
/// unchanged, with control characters or bytes that are no UTF-8, becomes an expression: the
/// statement's quotes are left empty around its bytes in hexadecimal.
std::string sqlText(const std::string& text);
