#pragma once

#include <array>
#include <cstddef>
#include <map>
#include <string>
#include <tuple>
#include <vector>

#include "FindingWriter.h"
#include "output/Output.h"

/// Writes findings as people and editors read them, a line each; or, grouped, one line for all of a
/// kind, table and column.
class LinesWriter : public FindingWriter {
public:
    LinesWriter(Output& output, bool isGrouped) : m_output(output), m_isGrouped(isGrouped) {}

    bool wantsOrder() const override { return !m_isGrouped; }
    void beginFile(const std::string& file) override;
    void add(const Finding& finding) override;
    void endFile() override;

private:
    struct Group {
        std::vector<Finding> first;
        std::size_t count = 0;
        bool isOneAdvice = true;
    };

    using GroupKey = std::tuple<FindingKind, std::string, std::string>;

    void addToGroup(const Finding& finding);
    void writeGroups();
    void writeLine(const Finding& finding, const std::string& place, const std::string& text);
    void writeSummary();

    Output& m_output;
    const bool m_isGrouped;
    std::string m_file;
    std::vector<Group> m_groups;  ///< in the order of their first findings
    std::map<GroupKey, std::size_t> m_groupPositions;
    std::array<std::size_t, 3> m_counts = {};  ///< by severity
};
