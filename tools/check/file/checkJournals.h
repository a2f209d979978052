#pragma once

#include <string>

#include "check/Finding.h"
#include "database/Journals.h"

/// Finds what makes a file unfit for being shipped alone, or for a place that cannot be written.
void checkJournals(const Journals& journals, const FindingSink& sink);
