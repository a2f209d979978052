#pragma once

#include <string>

/// What stands below the options in the help.

/// Of the command line as a whole.
std::string generalFooter();

/// Of a command: an example, and the statuses.
///
/// @param foundNothing  what status 1 means; empty: it does not occur.
std::string footer(const std::string& example, const std::string& foundNothing = "");

/// Of zav check: the kinds of finding, an example and its statuses.
std::string checkFooter();

/// Of zav install.
std::string installFooter();
