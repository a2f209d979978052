#include "FileCheck.h"

#include "checkContents.h"
#include "database/DatabaseErrors.h"
#include "database/RawDatabase.h"
#include "file/checkJournals.h"

FileCheck::FileCheck(const std::string& file, const CheckOptions& options)
    : m_file(file),
      m_options(options),
      m_journals(journalsOf(file)),
      m_trial(file, options.onProgress)
{
}

void FileCheck::run(const FindingSink& sink) const
{
    for (const Finding& finding : m_trial.findings()) {
        sink(finding);
    }
    checkJournals(m_journals, sink);
    if (!m_trial.isSafe()) {
        return;
    }
    try {
        checkContents(RawDatabase(m_file), m_options, sink);
    } catch (const FailedQuery& failure) {
        sink(failedRead("", failure.what()));
    }
}
