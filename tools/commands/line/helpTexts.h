#pragma once

#include <string>

/// What stands below the options in the help.

/// Of the command line as a whole.
std::string generalFooter();

/// @param foundNothing  what status 1 means; empty: it does not occur.
std::string exitStatuses(const std::string& foundNothing = "");

/// Of zav check: the kinds of finding, and its statuses.
std::string checkFooter();

/// Of zav install.
std::string installFooter();
