#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "check/Finding.h"

/// What came of reading a file whole, in a process of its own, in every way in which it will be
/// read: a file made to do harm does it there.
class Trial {
public:
    /// @param onProgress  called every now and then meanwhile.
    Trial(const std::string& file, const std::function<void()>& onProgress);

    /// The findings "unreadable" and "damaged".
    const std::vector<Finding>& findings() const { return m_findings; }

    /// @return whether the file can be read here, too.
    bool isSafe() const { return m_isSafe; }

private:
    void take(const std::string& report);
    void add(const Finding& finding) { m_findings.push_back(finding); }

    std::vector<Finding> m_findings;
    bool m_isSafe = false;
};

/// @return the finding that a query of a table has failed, with SQLite's words; without a table,
///         another query.
Finding failedRead(const std::string& table, const std::string& words);
