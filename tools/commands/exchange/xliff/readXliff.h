#pragma once

#include <string>
#include <vector>

#include "Translation.h"
#include "commands/exchange/Mistake.h"

/// Reads the bytes of an XLIFF 1.2 file. Other than in what is written, a state may be any, and the
/// notes are not read.
///
/// @param name      of the file, for the mistakes.
/// @param mistakes  gets all that are found; the result is of use only if there are none.
std::vector<Translation> readXliff(std::string content, const std::string& name,
                                   Mistakes& mistakes);

/// The same of a file.
///
/// @throws UnreadableFile
std::vector<Translation> readXliffFile(const std::string& file, Mistakes& mistakes);
