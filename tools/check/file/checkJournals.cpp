#include "checkJournals.h"

namespace {

Finding walMode()
{
    Finding found(FindingKind::WAL_MODE);
    found.what =
        "the file is in WAL mode: every query fails on a read-only medium, or without the right to "
        "write to the folder; run PRAGMA journal_mode=DELETE before shipping, and take a -wal file "
        "beside it as part of the data";
    return found;
}

Finding journalFile(const std::string& name)
{
    Finding found(FindingKind::JOURNAL_FILE);
    found.value = RawCell::ofText(name);
    found.what =
        "the journal lies beside the file: SQLite applies it, and without the right to write every "
        "query may fail; run VACUUM before shipping, which leaves no journal";
    return found;
}

}  // namespace

void checkJournals(const Journals& journals, const FindingSink& sink)
{
    if (journals.isWalMode) {
        sink(walMode());
    }
    if (!journals.rollbackJournal.empty()) {
        sink(journalFile(journals.rollbackJournal));
    }
    if (!journals.wal.empty() && !journals.isWalMode) {
        sink(journalFile(journals.wal));
    }
}
