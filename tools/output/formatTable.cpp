#include <fmt/color.h>
#include <fmt/format.h>

#include <algorithm>
#include <numeric>

#include "formats.h"
#include "text/TextWidth.h"

namespace {

constexpr std::size_t GAP = 2;               // between columns
constexpr std::size_t NARROWEST_TEXT = 12;   // a column of running text below that is no use
constexpr std::size_t NARROWEST_VALUE = 10;  // beside the names of a record, however wide these are

using Lines = std::vector<std::string>;
using Widths = std::vector<std::size_t>;

std::string titleOf(const Table::Column& column)
{
    std::string title = column.name;
    std::replace(title.begin(), title.end(), '_', ' ');
    return title;
}

std::string emphasised(const std::string& text, const Terminal& terminal)
{
    return terminal.hasColour ? fmt::format(fmt::emphasis::bold, "{}", text) : text;
}

std::string padding(std::size_t width, const std::string& text)
{
    const std::size_t used = displayWidth(text);
    std::string blanks(width > used ? width - used : 0, ' ');
    return blanks;
}

/// A table whose cells are safe to show, and the room that each column may have.
struct Layout {
    struct Column {
        std::string title;
        bool isNumber;
        std::size_t narrowest;
        std::size_t widest;
    };

    std::vector<Column> columns;
    std::vector<Lines> rows;
};

Layout::Column layoutColumn(const Table::Column& column, std::size_t index,
                            const std::vector<Lines>& rows)
{
    const std::string title = titleOf(column);
    std::size_t widest = 0;
    for (const Lines& row : rows) {
        widest = std::max(widest, widestLine(row[index]));
    }
    const bool isNumber = column.kind == Table::Kind::NUMBER;
    const std::size_t narrowest = isNumber ? widest : std::min(widest, NARROWEST_TEXT);
    return {title, isNumber, std::max(narrowest, widestWord(title)),
            std::max(widest, displayWidth(title))};
}

Layout layOut(const Table& table)
{
    Layout layout;
    for (const Table::Row& row : table.rows) {
        Lines cells;
        for (const Table::Cell& cell : row) {
            cells.push_back(printable(cellText(cell)));
        }
        layout.rows.push_back(cells);
    }
    for (std::size_t i = 0; i < table.columns.size(); ++i) {
        layout.columns.push_back(layoutColumn(table.columns[i], i, layout.rows));
    }
    return layout;
}

std::size_t totalWidth(const Widths& widths)
{
    return std::accumulate(widths.begin(), widths.end(), GAP * (widths.size() - 1));
}

Widths widestWidths(const Layout& layout)
{
    Widths widths;
    for (const Layout::Column& column : layout.columns) {
        widths.push_back(column.widest);
    }
    return widths;
}

/// Numbers as narrow as they get, texts as wide as they like up to a limit that is the same for
/// all.
Widths widthsUpTo(std::size_t limit, const Layout& layout)
{
    Widths widths;
    for (const Layout::Column& column : layout.columns) {
        widths.push_back(column.isNumber ? column.narrowest
                                         : std::clamp(limit, column.narrowest, column.widest));
    }
    return widths;
}

/// The widths that make the best of the room; empty if it is too little.
Widths fittingWidths(const Layout& layout, std::size_t available)
{
    Widths widths = widestWidths(layout);
    for (std::size_t limit = available; totalWidth(widths) > available; --limit) {
        if (limit == 0) {
            return {};
        }
        widths = widthsUpTo(limit, layout);
    }
    return widths;
}

/// One row of cells, each of which may take several lines.
std::string renderRow(const Lines& cells, const Layout& layout, const Widths& widths,
                      const Terminal& terminal, bool isHeader)
{
    std::vector<Lines> wrapped;
    std::size_t height = 0;
    for (std::size_t i = 0; i < cells.size(); ++i) {
        wrapped.push_back(wrap(cells[i], widths[i]));
        height = std::max(height, wrapped.back().size());
    }
    std::string rendered;
    for (std::size_t line = 0; line < height; ++line) {
        std::string pending;  // blanks are written only once something follows them
        for (std::size_t i = 0; i < cells.size(); ++i) {
            const std::string text = line < wrapped[i].size() ? wrapped[i][line] : "";
            const std::string blanks = padding(widths[i], text);
            if (layout.columns[i].isNumber) {
                pending += blanks;
            }
            if (!text.empty()) {
                rendered += pending + (isHeader ? emphasised(text, terminal) : text);
                pending.clear();
            }
            if (!layout.columns[i].isNumber) {
                pending += blanks;
            }
            pending += std::string(GAP, ' ');
        }
        rendered += '\n';
    }
    return rendered;
}

std::string renderRule(const Widths& widths)
{
    std::string rule;
    for (const std::size_t width : widths) {
        rule += (rule.empty() ? "" : std::string(GAP, ' ')) + std::string(width, '-');
    }
    return rule + '\n';
}

std::string renderColumns(const Layout& layout, const Widths& widths, const Terminal& terminal)
{
    Lines titles;
    for (const Layout::Column& column : layout.columns) {
        titles.push_back(column.title);
    }
    std::string rendered = renderRow(titles, layout, widths, terminal, true) + renderRule(widths);
    for (const Lines& row : layout.rows) {
        rendered += renderRow(row, layout, widths, terminal, false);
    }
    return rendered;
}

std::string renderField(const std::string& title, std::size_t titleWidth, const std::string& value,
                        const Terminal& terminal)
{
    const std::size_t indent = titleWidth + GAP;
    const std::size_t room =
        std::max(terminal.width > indent ? terminal.width - indent : 0, NARROWEST_VALUE);
    std::string rendered = emphasised(title, terminal);
    std::string blanks = padding(indent, title);
    for (const std::string& line : wrap(value, room)) {
        rendered += (line.empty() ? "" : blanks + line) + '\n';
        blanks = std::string(indent, ' ');
    }
    return rendered;
}

std::string renderBlocks(const Layout& layout, const Terminal& terminal)
{
    std::size_t titleWidth = 0;
    for (const Layout::Column& column : layout.columns) {
        titleWidth = std::max(titleWidth, displayWidth(column.title));
    }
    std::string rendered;
    for (const Lines& row : layout.rows) {
        rendered += rendered.empty() ? "" : "\n";
        for (std::size_t i = 0; i < row.size(); ++i) {
            rendered += renderField(layout.columns[i].title, titleWidth, row[i], terminal);
        }
    }
    return rendered;
}

}  // namespace

std::string renderTable(const Table& table, const Terminal& terminal)
{
    const Layout layout = layOut(table);
    const Widths widths = fittingWidths(layout, terminal.width);
    return widths.empty() ? renderBlocks(layout, terminal)
                          : renderColumns(layout, widths, terminal);
}

std::string renderRecords(const Table& table, const Terminal& terminal)
{
    return renderBlocks(layOut(table), terminal);
}
