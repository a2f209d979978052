#pragma once

#include <string>

#include "check/Finding.h"

/// @return a value as people read it: texts in quotes, shortened to so many bytes.
std::string shownValue(const RawCell& value, std::size_t bytes = 60);

/// @return what a finding says, apart from where it is.
std::string messageOf(const Finding& finding);
