#include "CheckCommand.h"

#include <fmt/format.h>

#include "CheckFindings.h"

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

std::string summary(std::size_t count)
{
    return count == 0 ? "no findings\n"
                      : fmt::format("\n{} finding{}\n", count, count == 1 ? "" : "s");
}

}  // namespace

ExitStatus runCheck(Database& database, Output& output)
{
    const Findings findings = findSurprises(database.file());
    if (output.format() != Format::TABLE) {
        output.print(tableOf(findings));
    } else {
        output.printRecords(tableOf(findings));
        output.printText(summary(findings.size()));
    }
    return findings.empty() ? ExitStatus::DONE : ExitStatus::NOT_FOUND_OR_FINDINGS;
}
