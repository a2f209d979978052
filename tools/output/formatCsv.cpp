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

std::string csvLine(const std::vector<std::string>& fields)
{
    std::string line;
    for (const std::string& field : fields) {
        line += quotedIfNeeded(field) + ',';
    }
    line.pop_back();
    return line + LINE_END;
}

}  // namespace

std::string renderCsv(const Table& table, const Terminal& terminal)
{
    std::vector<std::string> fields;
    for (const Table::Column& column : table.columns) {
        fields.push_back(column.name);
    }
    std::string csv = csvLine(fields);
    for (const Table::Row& row : table.rows) {
        fields.clear();
        for (const Table::Cell& cell : row) {
            const std::string text = cellText(cell);
            fields.push_back(terminal.isTerminal ? printable(text) : text);
        }
        csv += csvLine(fields);
    }
    return csv;
}
