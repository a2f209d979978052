#pragma once

#include "database/Database.h"
#include "database/DatabaseErrors.h"
#include "database/RawDatabase.h"
#include "text/formatted.h"

/// Reads what a file holds, beside the library.
///
/// @param read  gets the RawDatabase.
/// @return what `read` returns.
/// @throws UnreadableFile
template <class Read>
auto readingStored(const Database& database, const Read& read)
{
    try {
        return read(RawDatabase(database.file()));
    } catch (const FailedQuery& failure) {
        throw UnreadableFile(formatted("{}: cannot be read: {}", database.file(), failure.what()));
    }
}
