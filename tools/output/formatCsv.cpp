#include "formats.h"
#include "text/TextWidth.h"

namespace {

constexpr const char* LINE_END = "\r\n";

std::string quotedIfNeeded(const std::string& field)
{
    if (field.find_first_of(",\"\r\n") == std::string::npos) {
        return field;
    }
    std::string doubled;
    for (const char character : field) {
        doubled.append(character == '"' ? 2 : 1, character);
    }
    return '"' + doubled + '"';
}

}  // namespace

std::string renderCsv(const Table& table, const Terminal& terminal)
{
    std::vector<std::string> fields;
    for (const Table::Column& column : table.columns) {
        fields.push_back(column.name);
    }
    std::string csv = renderCsvLine(fields, terminal);
    for (const Table::Row& row : table.rows) {
        fields.clear();
        for (const Table::Cell& cell : row) {
            fields.push_back(cellText(cell));
        }
        csv += renderCsvLine(fields, terminal);
    }
    return csv;
}

std::string renderCsvLine(const std::vector<std::string>& fields, const Terminal& terminal)
{
    std::string line;
    for (const std::string& field : fields) {
        line += quotedIfNeeded(terminal.isTerminal ? printable(field) : field) + ',';
    }
    line.pop_back();
    return line + LINE_END;
}
