#pragma once

#include <string>

#include "CheckOptions.h"
#include "Finding.h"
#include "database/Journals.h"
#include "file/Trial.h"

/// The check of one file, whatever may be in it.
class FileCheck {
public:
    /// Tries out whether the file can be read. No database may be open.
    FileCheck(const std::string& file, const CheckOptions& options);

    /// Reports all findings, those of the file as a whole first; may be called again.
    void run(const FindingSink& sink) const;

private:
    std::string m_file;
    const CheckOptions& m_options;
    Journals m_journals;  ///< as they were before the file was opened
    Trial m_trial;
};
