#include "LinesWriter.h"

#include <algorithm>

#include "findingText.h"
#include "text/TextWidth.h"
#include "text/counted.h"
#include "text/formatted.h"
#include "text/shortened.h"

namespace {

constexpr std::size_t SHOWN_ROWS = 3;
constexpr std::size_t LONGEST_LINE = 400;     // beside the name of the file
constexpr std::size_t LONGEST_IN_PLACE = 60;  // the name of a column, a key that is a text
constexpr std::size_t LONGEST_IN_GROUP = 40;

std::string placeOf(const std::string& table, const std::string& row, const std::string& column)
{
    std::string place = table;
    place += row.empty() ? "" : " " + shortened(row, LONGEST_IN_PLACE);
    place += column.empty() ? "" : ", " + shortened(column, LONGEST_IN_PLACE);
    return place.empty() ? "" : place + ": ";
}

Severity severityOf(const Finding& finding)
{
    return infoOf(finding.kind).severity;
}

std::string rowAndValue(const Finding& finding)
{
    std::vector<std::string> parts;
    if (!finding.row.label.empty()) {
        parts.push_back(shortened(finding.row.label, LONGEST_IN_GROUP));
    }
    const bool isKey =
        finding.value && finding.row.label == finding.column + '=' + finding.value->bytes;
    if (finding.value && !isKey) {
        parts.push_back(shownValue(*finding.value, LONGEST_IN_GROUP));
    }
    return listed(parts, " ");
}

}  // namespace

void LinesWriter::beginFile(const std::string& file)
{
    m_file = printableLine(file);
    m_counts = {};
}

void LinesWriter::add(const Finding& finding)
{
    ++m_counts[static_cast<std::size_t>(severityOf(finding))];
    if (m_isGrouped) {
        addToGroup(finding);
    } else {
        writeLine(finding, placeOf(finding.table, finding.row.label, finding.column),
                  messageOf(finding));
    }
}

void LinesWriter::addToGroup(const Finding& finding)
{
    const GroupKey key = {finding.kind, finding.table, finding.column};
    const auto [position, isNew] = m_groupPositions.emplace(key, m_groups.size());
    if (isNew) {
        m_groups.emplace_back();
    }
    Group& group = m_groups[position->second];
    ++group.count;
    if (group.first.size() < SHOWN_ROWS) {
        group.first.push_back(finding);
    }
    group.isOneAdvice = group.isOneAdvice && finding.what == group.first.front().what;
}

void LinesWriter::writeGroups()
{
    std::stable_sort(m_groups.begin(), m_groups.end(), [](const Group& one, const Group& other) {
        return severityOf(one.first.front()) > severityOf(other.first.front());
    });
    for (const Group& group : m_groups) {
        const Finding& first = group.first.front();
        if (group.count == 1) {
            writeLine(first, placeOf(first.table, first.row.label, first.column), messageOf(first));
            continue;
        }
        std::vector<std::string> rows;
        for (const Finding& finding : group.first) {
            rows.push_back(rowAndValue(finding));
        }
        const std::string more =
            group.count > rows.size() ? formatted(" and {} more", group.count - rows.size()) : "";
        writeLine(first, placeOf(first.table, "", first.column),
                  formatted("{} in all ({}{}): {}", group.count, listed(rows, ", "), more,
                            group.isOneAdvice ? first.what : infoOf(first.kind).help));
    }
    m_groups.clear();
    m_groupPositions.clear();
}

void LinesWriter::writeLine(const Finding& finding, const std::string& place,
                            const std::string& text)
{
    const KindInfo& info = infoOf(finding.kind);
    const std::string begin = formatted("{}{}: ", place, nameOf(info.severity));
    const std::string end = formatted(" [{}]", info.name);
    const std::size_t around = std::string_view(": ...").size() + begin.size() + end.size();
    m_output.printText(m_file + ": " + begin + shortened(text, LONGEST_LINE - around) + end + "\n");
}

void LinesWriter::endFile()
{
    writeGroups();
    writeSummary();
}

void LinesWriter::writeSummary()
{
    std::vector<std::string> parts;
    for (const Severity severity : {Severity::ERROR, Severity::WARNING, Severity::NOTE}) {
        const std::size_t count = m_counts[static_cast<std::size_t>(severity)];
        if (count > 0) {
            parts.push_back(counted(count, nameOf(severity)));
        }
    }
    m_output.printText(parts.empty() ? m_file + ": no findings\n"
                                     : formatted("{}: {}\n", m_file, listed(parts, ", ")));
}
