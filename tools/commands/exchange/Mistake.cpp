#include "Mistake.h"

#include <iostream>

#include "database/DatabaseErrors.h"
#include "text/TextWidth.h"
#include "text/counted.h"
#include "text/formatted.h"

namespace {

/// @return as editors and compilers write it, so that others find the place.
std::string lineOf(const Mistake& mistake)
{
    std::string line = mistake.file;
    line += mistake.line > 0 ? formatted(":{}", mistake.line) : "";
    line += mistake.column.empty() ? "" : formatted(": {}", mistake.column);
    return printableLine(formatted("{}: {}", line, mistake.what));
}

}  // namespace

void refuseMistakes(const Mistakes& mistakes, const std::string& name)
{
    for (const Mistake& mistake : mistakes) {
        std::cerr << lineOf(mistake) << '\n';
    }
    if (!mistakes.empty()) {
        throw UnfitFile(formatted("{}: {}", name, counted(mistakes.size(), "mistake")));
    }
}
