#include "CheckCommand.h"

#include <algorithm>
#include <tuple>

#include "check/CheckFindings.h"
#include "text/counted.h"

namespace {

using Kind = Table::Kind;

Table tableOf(const Findings& findings)
{
    Table table = {{{"finding", Kind::TEXT},
                    {"table", Kind::TEXT},
                    {"row", Kind::TEXT},
                    {"column", Kind::TEXT},
                    {"value", Kind::TEXT},
                    {"delivered", Kind::TEXT},
                    {"advice", Kind::TEXT}},
                   {}};
    for (const Finding& finding : findings) {
        table.rows.push_back({finding.kind, finding.table, finding.row, finding.column,
                              finding.value, finding.delivered, finding.advice});
    }
    return table;
}

bool isSameBesideRow(const Finding& one, const Finding& other)
{
    return std::tie(one.kind, one.table, one.column, one.value, one.delivered, one.advice) ==
           std::tie(other.kind, other.table, other.column, other.value, other.delivered,
                    other.advice);
}

/// One finding for all those that differ in nothing but the row, and names all the rows.
Findings grouped(const Findings& findings)
{
    Findings groups;
    for (const Finding& finding : findings) {
        const auto group = std::find_if(
            groups.begin(), groups.end(),
            [&](const Finding& candidate) { return isSameBesideRow(candidate, finding); });
        if (group == groups.end()) {
            groups.push_back(finding);
        } else {
            group->row += ", " + finding.row;
        }
    }
    return groups;
}

std::string summary(std::size_t count)
{
    return count == 0 ? "no findings\n" : "\n" + counted(count, "finding") + "\n";
}

}  // namespace

ExitStatus runCheck(const Database& database, Output& output)
{
    const Findings findings = findSurprises(database);
    if (output.format() != Format::TABLE) {
        output.print(tableOf(findings));
    } else {
        output.printRecords(tableOf(grouped(findings)));
        output.printText(summary(findings.size()));
    }
    return findings.empty() ? ExitStatus::DONE : ExitStatus::NOT_FOUND_OR_FINDINGS;
}
