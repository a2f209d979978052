#include "writeChanges.h"

#include <algorithm>
#include <nlohmann/json.hpp>

#include "output/JsonList.h"
#include "output/formats.h"
#include "text/TextWidth.h"
#include "text/changedWords.h"
#include "text/formatted.h"
#include "text/nullMark.h"

namespace {

constexpr char OLD_SIGN = '-';
constexpr char NEW_SIGN = '+';

std::string titleOf(const Change& change, const ChangeList& list)
{
    std::string title = formatted("{} {}", nameOf(change.kind), list.nameOf(change));
    if (change.language) {
        title += ", language " + (change.language->isNull() ? "NULL" : change.language->bytes);
    }
    return title;
}

/// @return the runs on lines of their own, each after a sign.
std::string signedLines(const std::vector<WordRun>& runs, char sign, const Output& output)
{
    const std::string beginning = std::string("    ") + sign;
    std::string text = beginning;
    bool isAtBeginning = true;
    const auto add = [&](const std::string& piece, Look look) {
        if (!piece.empty()) {
            text += (isAtBeginning ? " " : "") + output.styled(look, piece);
            isAtBeginning = false;
        }
    };
    for (const WordRun& run : runs) {
        const Look look = run.isChanged ? Look::STRONG : Look::PLAIN;
        const std::string shown = printable(run.text);
        std::size_t start = 0;
        for (std::size_t end = shown.find('\n'); end != std::string::npos;
             end = shown.find('\n', start)) {
            add(shown.substr(start, end - start), look);
            text += '\n' + beginning;
            isAtBeginning = true;
            start = end + 1;
        }
        add(shown.substr(start), look);
    }
    return text + '\n';
}

std::string valueLines(const RawCell& cell, char sign, const Output& output)
{
    return cell.isNull() ? formatted("    {} {}\n", sign, output.styled(Look::FAINT, "NULL"))
                         : signedLines({{cell.bytes, false}}, sign, output);
}

std::string fieldLines(const FieldChange& field, const Output& output)
{
    std::string lines = "  " + field.field + '\n';
    if (field.before && field.after && !field.before->isNull() && !field.after->isNull()) {
        const WordRuns runs = changedWords(field.before->bytes, field.after->bytes);
        return lines + signedLines(runs.before, OLD_SIGN, output) +
               signedLines(runs.after, NEW_SIGN, output);
    }
    lines += field.before ? valueLines(*field.before, OLD_SIGN, output) : "";
    lines += field.after ? valueLines(*field.after, NEW_SIGN, output) : "";
    return lines;
}

nlohmann::ordered_json toJson(const RawCell& cell)
{
    return toJson(RawCellView{cell.type, cell.bytes});
}

std::string csvCell(const std::optional<RawCell>& cell)
{
    if (!cell) {
        return "";
    }
    return cell->isNull() ? NULL_MARK : withoutNullMark(cell->bytes);
}

/// What Markdown would take for more than letters.
std::string markdownText(const std::string& text)
{
    std::string escaped;
    for (const char character : printable(text)) {
        if (character == '\n') {
            escaped += "<br>";
        } else if (std::string_view("\\`*_{}[]<>#|&~").find(character) != std::string_view::npos) {
            escaped += '\\';
            escaped += character;
        } else {
            escaped += character;
        }
    }
    return escaped;
}

std::string markdownCell(const std::optional<RawCell>& cell)
{
    if (!cell) {
        return "";
    }
    return cell->isNull() ? "*NULL*" : markdownText(cell->bytes);
}

/// @return the cells of a row, without the empty ones at the end of the columns that it lacks.
std::string markdownRow(const std::vector<std::string>& cells)
{
    return formatted("| {} |\n", listed(cells, " | "));
}

std::vector<std::string> markdownBeginning(const Change& change, const ChangeList& list)
{
    return {markdownText(list.nameOf(change)), markdownCell(change.language)};
}

std::string markdownRows(const Change& change, const ChangeList& list)
{
    std::string rows;
    for (const FieldChange& field : change.fields) {
        std::vector<std::string> cells = markdownBeginning(change, list);
        cells.push_back(markdownText(field.field));
        if (change.kind != Change::Kind::ADDED) {
            cells.push_back(markdownCell(field.before));
        }
        if (change.kind != Change::Kind::REMOVED) {
            cells.push_back(markdownCell(field.after));
        }
        rows += markdownRow(cells);
    }
    return rows;
}

std::string markdownHeader(Change::Kind kind)
{
    switch (kind) {
    case Change::Kind::ADDED:
        return "## Added\n\n| fault | language | field | new |\n| --- | ---: | --- | --- |\n";
    case Change::Kind::REMOVED:
        return "## Removed\n\n| fault | language | field | old |\n| --- | ---: | --- | --- |\n";
    default:
        return "## Changed\n\n| fault | language | field | old | new |\n"
               "| --- | ---: | --- | --- | --- |\n";
    }
}

}  // namespace

void writeChanges(const ChangeList& list, Output& output)
{
    const char* between = "";
    for (const Change& change : list.changes) {
        output.printText(between +
                         output.styled(Look::STRONG, printableLine(titleOf(change, list))) + '\n');
        for (const FieldChange& field : change.fields) {
            output.printText(fieldLines(field, output));
        }
        between = "\n";
    }
}

void writeChangesAsJson(const ChangeList& list, Output& output)
{
    JsonList entries(output);
    for (const Change& change : list.changes) {
        nlohmann::ordered_json entry;
        entry["change"] = nameOf(change.kind);
        entry["code"] = toJson(change.code);
        entry["language"] = change.language ? toJson(*change.language) : nlohmann::ordered_json();
        entry["fields"] = nlohmann::ordered_json::array();
        for (const FieldChange& field : change.fields) {
            nlohmann::ordered_json object = {{"field", field.field}};
            if (field.before) {
                object["old"] = toJson(*field.before);
            }
            if (field.after) {
                object["new"] = toJson(*field.after);
            }
            entry["fields"].push_back(object);
        }
        entries.add(entry);
    }
    entries.end();
}

void writeChangesAsCsv(const ChangeList& list, Output& output)
{
    output.printCsvLine({"change", "code", "language", "field", "old", "new"});
    for (const Change& change : list.changes) {
        for (const FieldChange& field : change.fields) {
            output.printCsvLine({nameOf(change.kind), csvCell(change.code),
                                 csvCell(change.language), field.field, csvCell(field.before),
                                 csvCell(field.after)});
        }
    }
}

void writeChangesAsMarkdown(const ChangeList& list, Output& output)
{
    const char* between = "";
    for (const Change::Kind kind :
         {Change::Kind::ADDED, Change::Kind::CHANGED, Change::Kind::REMOVED}) {
        std::string rows;
        for (const Change& change : list.changes) {
            rows += change.kind == kind ? markdownRows(change, list) : "";
        }
        if (!rows.empty()) {
            output.printText(between + markdownHeader(kind) + rows);
            between = "\n";
        }
    }
}
