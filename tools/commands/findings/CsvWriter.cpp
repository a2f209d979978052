#include "CsvWriter.h"

#include "findingText.h"
#include "text/nullMark.h"

namespace {

std::string textOrNothing(const std::string& text)
{
    return text.empty() ? NULL_MARK : withoutNullMark(text);
}

std::string textOf(const std::optional<RawCell>& value)
{
    return value && !value->isNull() ? withoutNullMark(value->bytes) : NULL_MARK;
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
                           finding.row.key ? std::to_string(*finding.row.key) : NULL_MARK,
                           textOrNothing(finding.column), textOf(finding.value),
                           textOf(finding.delivered), messageOf(finding)});
}
