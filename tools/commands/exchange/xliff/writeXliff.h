#pragma once

#include <string>

#include "Translation.h"

/// @return it as XLIFF 1.2: the same bytes of the same translation. Its texts must be ones that XML
///         can hold.
std::string xliffOf(const Translation& translation);
