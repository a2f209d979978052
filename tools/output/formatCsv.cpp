#include "RowBlock.h"
#include "formats.h"
#include "text/TextWidth.h"
#include "text/nullMark.h"

namespace {

constexpr const char* LINE_END = "\r\n";

void appendField(std::string_view field, std::string& line)
{
    const auto isIn = [field](char character) {
        return field.find(character) != std::string_view::npos;
    };
    if (!(isIn(',') || isIn('"') || isIn('\r') || isIn('\n'))) {
        line += field;
        return;
    }
    line += '"';
    for (const char character : field) {
        line.append(character == '"' ? 2 : 1, character);
    }
    line += '"';
}

void appendText(std::string_view text, const Terminal& terminal, std::string& line)
{
    if (terminal.isTerminal) {
        appendField(printable(text), line);
    } else {
        appendField(text, line);
    }
}

void appendCell(const TableView::Cell& cell, const Terminal& terminal, std::string& line)
{
    if (const auto* text = std::get_if<std::string_view>(&cell)) {
        appendText(*text, terminal, line);
    } else if (const auto* stored = std::get_if<RawCellView>(&cell)) {
        appendText(stored->isNull() ? NULL_MARK : withoutNullMark(stored->bytes), terminal, line);
    } else {
        line += std::to_string(std::get<std::uint64_t>(cell));
    }
}

/// @param line  with a comma after each field.
void finish(std::string& line)
{
    line.pop_back();
    line += LINE_END;
}

}  // namespace

void writeCsv(const TableView& table, const Terminal& terminal, std::ostream& stream)
{
    std::vector<std::string> names;
    for (const Table::Column& column : table.columns) {
        names.push_back(column.name);
    }
    RowBlock block(stream);
    std::string& lines = block.text();
    lines = renderCsvLine(names, terminal);
    table.forEachRow([&](const TableView::Row& row) {
        for (const TableView::Cell& cell : row) {
            appendCell(cell, terminal, lines);
            lines += ',';
        }
        finish(lines);
        block.endRow();
    });
}

std::string renderCsvLine(const std::vector<std::string>& fields, const Terminal& terminal)
{
    std::string line;
    for (const std::string& field : fields) {
        appendText(field, terminal, line);
        line += ',';
    }
    finish(line);
    return line;
}
