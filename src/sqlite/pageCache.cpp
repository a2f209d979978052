#include "pageCache.h"

#include "execute.h"

// A lookup without an index scans its table, and of a file larger than SQLite's own cache of 2 MB
// each scan reads every page again. This many KiB hold any file whose ids fit their 16 bits: 65535
// texts of 300 bytes each. A smaller file takes no more than its own size, since only pages that
// have been read are kept. No mapping into memory: an I/O error there is a signal, not a code.
void enlargePageCache(sqlite3* db) noexcept
{
    execute(db, "PRAGMA cache_size=-20480");
}
