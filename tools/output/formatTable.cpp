
#include <algorithm>
#include <numeric>

#include "formats.h"
#include "text/TextWidth.h"

namespace {

constexpr std::size_t GAP = 2;               // between columns
constexpr std::size_t WIDEST_PADDED = 40;    // where nothing is wrapped
constexpr std::size_t NARROWEST_TEXT = 12;   // a column of running text below that is no use
constexpr std::size_t NARROWEST_VALUE = 10;  // beside the names of a record, however wide these are

using Lines = std::vector<std::string>;
using Widths = std::vector<std::size_t>;
using Looks = std::vector<Look>;

std::string titleOf(const Table::Column& column)
{
    std::string title = column.name;
    std::replace(title.begin(), title.end(), '_', ' ');
    return title;
}

std::string padding(std::size_t width, const std::string& text)
{
    const std::size_t used = displayWidth(text);
    std::string blanks(width > used ? width - used : 0, ' ');
    return blanks;
}

/// The room that each column of a table may have.
struct Layout {
    struct Column {
        std::string title;
        bool isNumber;
        std::size_t widestWord;
        std::size_t widest;

        /// @param breaksWords  rather than that the column is wide.
        std::size_t narrowestWidth(bool breaksWords) const
        {
            const std::size_t useful = std::min(widest, NARROWEST_TEXT);
            const std::size_t text = breaksWords ? useful : std::max(useful, widestWord);
            return std::max(isNumber ? widestWord : text, ::widestWord(title));
        }
    };

    std::vector<Column> columns;
};

/// @return the cells, safe to show.
Lines shownCells(const TableView::Row& row)
{
    Lines cells;
    for (const TableView::Cell& cell : row) {
        cells.push_back(printable(cellText(cell)));
    }
    return cells;
}

Looks looksOf(const TableView::Row& row)
{
    Looks looks;
    for (const TableView::Cell& cell : row) {
        looks.push_back(isNull(cell) ? Look::FAINT : Look::PLAIN);
    }
    return looks;
}

Layout layOut(const TableView& table, bool isWrapped)
{
    Layout layout;
    for (const Table::Column& column : table.columns) {
        const std::string title = titleOf(column);
        layout.columns.push_back(
            {title, column.kind == Table::Kind::NUMBER, 0, displayWidth(title)});
    }
    table.forEachRow([&](const TableView::Row& row) {
        const Lines cells = shownCells(row);
        for (std::size_t i = 0; i < cells.size(); ++i) {
            Layout::Column& column = layout.columns[i];
            column.widest = std::max(column.widest, widestLine(cells[i]));
            if (isWrapped) {
                column.widestWord = std::max(column.widestWord, widestWord(cells[i]));
            }
        }
    });
    return layout;
}

std::size_t totalWidth(const Widths& widths)
{
    return std::accumulate(widths.begin(), widths.end(), GAP * (widths.size() - 1));
}

Widths paddedWidths(const Layout& layout)
{
    Widths widths;
    for (const Layout::Column& column : layout.columns) {
        widths.push_back(std::min(column.widest, WIDEST_PADDED));
    }
    return widths;
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
Widths widthsUpTo(std::size_t limit, const Layout& layout, bool breaksWords)
{
    Widths widths;
    for (const Layout::Column& column : layout.columns) {
        const std::size_t narrowest = column.narrowestWidth(breaksWords);
        widths.push_back(column.isNumber
                             ? narrowest
                             : std::clamp(limit, narrowest, std::max(narrowest, column.widest)));
    }
    return widths;
}

/// The widths that make the best of the room; empty if it is too little.
Widths fittingWidths(const Layout& layout, std::size_t available, bool breaksWords)
{
    Widths widths = widestWidths(layout);
    for (std::size_t limit = available; totalWidth(widths) > available; --limit) {
        if (limit == 0) {
            return {};
        }
        widths = widthsUpTo(limit, layout, breaksWords);
    }
    return widths;
}

/// @return whether blocks have room for each word of the table.
bool haveBlocksRoom(const Layout& layout, std::size_t available)
{
    std::size_t title = 0;
    std::size_t word = 0;
    for (const Layout::Column& column : layout.columns) {
        title = std::max(title, displayWidth(column.title));
        word = std::max(word, column.widestWord);
    }
    return title + GAP + word <= available;
}

/// The widths of the columns; empty if blocks are better.
Widths chosenWidths(const Layout& layout, std::size_t available)
{
    constexpr bool BREAKS_WORDS = true;
    if (available == Terminal::UNLIMITED) {
        return paddedWidths(layout);
    }
    const Widths widths = fittingWidths(layout, available, !BREAKS_WORDS);
    return widths.empty() && !haveBlocksRoom(layout, available)
               ? fittingWidths(layout, available, BREAKS_WORDS)
               : widths;
}

Lines wrappedCell(const std::string& cell, std::size_t width, const Terminal& terminal)
{
    if (cell.find('\n') == std::string::npos &&
        (terminal.width == Terminal::UNLIMITED || cell.size() <= width)) {
        return {cell};
    }
    return wrap(cell, terminal.width == Terminal::UNLIMITED ? Terminal::UNLIMITED : width);
}

bool hasLines(const std::string& cell)
{
    return cell.find('\n') != std::string::npos;
}

/// One line of a row.
std::string renderLine(const Lines& texts, const Layout& layout, const Widths& widths,
                       const Terminal& terminal, const Looks& looks)
{
    std::string rendered;
    std::size_t pending = 0;  // blanks are written only once something follows them
    for (std::size_t i = 0; i < texts.size(); ++i) {
        const std::size_t used = displayWidth(texts[i]);
        const std::size_t blanks = widths[i] > used ? widths[i] - used : 0;
        const bool isNumber = layout.columns[i].isNumber;
        pending += isNumber ? blanks : 0;
        if (!texts[i].empty()) {
            rendered.append(pending, ' ');
            rendered += styled(looks[i], texts[i], terminal);
            pending = 0;
        }
        pending += (isNumber ? 0 : blanks) + GAP;
    }
    rendered += '\n';
    return rendered;
}

/// One row of cells, each of which may take several lines.
std::string renderRow(const Lines& cells, const Layout& layout, const Widths& widths,
                      const Terminal& terminal, const Looks& looks)
{
    if (terminal.width == Terminal::UNLIMITED &&
        std::none_of(cells.begin(), cells.end(), hasLines)) {
        return renderLine(cells, layout, widths, terminal, looks);
    }
    std::vector<Lines> wrapped;
    std::size_t height = 0;
    for (std::size_t i = 0; i < cells.size(); ++i) {
        wrapped.push_back(wrappedCell(cells[i], widths[i], terminal));
        height = std::max(height, wrapped.back().size());
    }
    std::string rendered;
    for (std::size_t line = 0; line < height; ++line) {
        Lines texts;
        for (const Lines& lines : wrapped) {
            texts.push_back(line < lines.size() ? lines[line] : "");
        }
        rendered += renderLine(texts, layout, widths, terminal, looks);
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

void writeColumns(const TableView& table, const Layout& layout, const Widths& widths,
                  const Terminal& terminal, std::ostream& stream)
{
    Lines titles;
    for (const Layout::Column& column : layout.columns) {
        titles.push_back(column.title);
    }
    const Looks strong(titles.size(), Look::STRONG);
    stream << renderRow(titles, layout, widths, terminal, strong) << renderRule(widths);
    table.forEachRow([&](const TableView::Row& row) {
        stream << renderRow(shownCells(row), layout, widths, terminal, looksOf(row));
    });
}

/// The title, and the value beside it; below it where beside it there is too little room.
std::string renderField(const std::string& title, std::size_t titleWidth, const std::string& value,
                        Look look, const Terminal& terminal)
{
    const bool isBeside = terminal.width >= titleWidth + GAP + NARROWEST_VALUE;
    const std::size_t indent = isBeside ? titleWidth + GAP : GAP;
    std::string rendered = styled(Look::STRONG, title, terminal);
    std::string blanks = padding(indent, title);
    if (!isBeside) {
        rendered += '\n';
        blanks = std::string(indent, ' ');
    }
    for (const std::string& line : wrap(value, terminal.width - indent)) {
        rendered += (line.empty() ? "" : blanks + styled(look, line, terminal)) + '\n';
        blanks = std::string(indent, ' ');
    }
    return rendered;
}

}  // namespace

void writeTable(const TableView& table, const Terminal& terminal, std::ostream& stream)
{
    const Layout layout = layOut(table, terminal.width != Terminal::UNLIMITED);
    const Widths widths = chosenWidths(layout, terminal.width);
    if (widths.empty()) {
        writeRecords(table, terminal, stream);
    } else {
        writeColumns(table, layout, widths, terminal, stream);
    }
}

void writeRecords(const TableView& table, const Terminal& terminal, std::ostream& stream)
{
    Lines titles;
    std::size_t titleWidth = 0;
    for (const Table::Column& column : table.columns) {
        titles.push_back(titleOf(column));
        titleWidth = std::max(titleWidth, displayWidth(titles.back()));
    }
    bool isFirst = true;
    table.forEachRow([&](const TableView::Row& row) {
        stream << (isFirst ? "" : "\n");
        isFirst = false;
        const Lines cells = shownCells(row);
        const Looks looks = looksOf(row);
        for (std::size_t i = 0; i < cells.size(); ++i) {
            stream << renderField(titles[i], titleWidth, cells[i], looks[i], terminal);
        }
    });
}
