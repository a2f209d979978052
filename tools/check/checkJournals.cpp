#include "checkJournals.h"

namespace {

Finding walMode()
{
    return {"wal-mode",
            "",
            "",
            "",
            "wal",
            "every query fails on a read-only medium, or without the right to write to the folder",
            "run PRAGMA journal_mode=DELETE before shipping; a -wal file is part of the data",
            false};
}

Finding journalFile(const std::string& name)
{
    return {"journal-file",
            "",
            "",
            "",
            name,
            "the data once SQLite has applied the journal; without the right to write, every query "
            "may fail",
            "run VACUUM before shipping, which leaves no journal",
            false};
}

}  // namespace

void checkJournals(const Journals& journals, Findings& findings)
{
    if (journals.isWalMode) {
        findings.push_back(walMode());
    }
    if (!journals.rollbackJournal.empty()) {
        findings.push_back(journalFile(journals.rollbackJournal));
    }
    if (!journals.wal.empty() && !journals.isWalMode) {
        findings.push_back(journalFile(journals.wal));
    }
}
