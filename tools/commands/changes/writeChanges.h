#pragma once

#include "ChangeList.h"
#include "output/Output.h"

/// One routine per way in which changes are written.

/// For people: an entry for each, with the words that differ emphasised on a terminal.
void writeChanges(const ChangeList& list, Output& output);

/// An array of one object per entry, with its fields; what was not there has no "old", what is not
/// there any more no "new".
void writeChangesAsJson(const ChangeList& list, Output& output);

/// A line per field.
void writeChangesAsCsv(const ChangeList& list, Output& output);

/// For release notes.
void writeChangesAsMarkdown(const ChangeList& list, Output& output);
