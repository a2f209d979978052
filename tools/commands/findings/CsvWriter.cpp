#include "CsvWriter.h"

#include "findingText.h"

namespace {

constexpr const char* NOTHING = "\\N";

std::string textOrNothing(const std::string& text)
{
    return text.empty() ? NOTHING : text;
}

std::string textOf(const std::optional<RawCell>& value)
{
    return value && !value->isNull() ? value->bytes : NOTHING;
}

}  // namespace

void CsvWriter::begin()
{
    m_output.printCsvLine({"file", "kind", "severity", "table", "key_column", "key", "column",
                           "value", "delivered", "message"});
}

void CsvWriter::add(const Finding& finding)
{
    const KindInfo& info = infoOf(finding.kind);
    m_output.printCsvLine({m_file, info.name, nameOf(info.severity), textOrNothing(finding.table),
                           textOrNothing(finding.row.keyColumn),
                           finding.row.key ? std::to_string(*finding.row.key) : NOTHING,
                           textOrNothing(finding.column), textOf(finding.value),
                           textOf(finding.delivered), messageOf(finding)});
}
