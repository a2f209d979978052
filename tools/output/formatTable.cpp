
#include <algorithm>
#include <numeric>

#include "RowBlock.h"
#include "formats.h"
#include "text/TextWidth.h"
#include "text/Utf8.h"

namespace {

constexpr std::size_t GAP = 2;               // between columns
constexpr std::size_t WIDEST_PADDED = 40;    // where nothing is wrapped
constexpr std::size_t NARROWEST_TEXT = 12;   // a column of running text below that is no use
constexpr std::size_t NARROWEST_VALUE = 10;  // beside the names of a record, however wide these are

using Lines = std::vector<std::string>;
using Widths = std::vector<std::size_t>;

/// A text that is safe to show, as long as what it is of.
struct Shown {
    std::string_view text;
    std::size_t width;  ///< of the widest line
    Look look;

    bool hasLines() const { return text.find('\n') != std::string_view::npos; }
};

using ShownRow = std::vector<Shown>;

/// Shows cells. Nearly all are safe as they are, and are not copied.
class Showing {
public:
    explicit Showing(std::size_t columnCount) : m_made(columnCount), m_row(columnCount) {}

    /// @return the cell, until the next one of the column.
    Shown show(const TableView::Cell& cell, std::size_t column)
    {
        if (const auto* text = std::get_if<std::string_view>(&cell)) {
            const std::size_t plain = utf8::plainLength(*text);
            if (plain == text->size()) {
                return {*text, plain, Look::PLAIN};
            }
            if (utf8::harmlessLength(*text) == text->size()) {
                return {*text, displayWidth(*text), Look::PLAIN};
            }
        }
        std::string& made = m_made[column];
        made = printable(cellText(cell));
        return {made, widestLine(made), isNull(cell) ? Look::FAINT : Look::PLAIN};
    }

    /// @return the cells, until the next row.
    const ShownRow& show(const TableView::Row& row)
    {
        for (std::size_t i = 0; i < row.size(); ++i) {
            m_row[i] = show(row[i], i);
        }
        return m_row;
    }

private:
    Lines m_made;
    ShownRow m_row;
};

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

Layout layOut(const TableView& table, bool isWrapped)
{
    Layout layout;
    for (const Table::Column& column : table.columns) {
        const std::string title = titleOf(column);
        layout.columns.push_back(
            {title, column.kind == Table::Kind::NUMBER, 0, displayWidth(title)});
    }
    Showing showing(table.columns.size());
    table.forEachRow([&](const TableView::Row& row) {
        for (std::size_t i = 0; i < row.size(); ++i) {
            Layout::Column& column = layout.columns[i];
            if (!isWrapped && column.widest >= WIDEST_PADDED) {
                continue;
            }
            const Shown cell = showing.show(row[i], i);
            column.widest = std::max(column.widest, cell.width);
            if (isWrapped) {
                column.widestWord = std::max(column.widestWord, widestWord(cell.text));
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

Lines wrappedCell(const Shown& cell, std::size_t width, const Terminal& terminal)
{
    if (!cell.hasLines() && (terminal.width == Terminal::UNLIMITED || cell.width <= width)) {
        return {std::string(cell.text)};
    }
    return wrap(cell.text, terminal.width == Terminal::UNLIMITED ? Terminal::UNLIMITED : width);
}

void appendStyled(const Shown& cell, const Terminal& terminal, std::string& text)
{
    if (terminal.hasColour) {
        text += styled(cell.look, std::string(cell.text), terminal);
    } else {
        text += cell.text;
    }
}

/// One line of a row.
void appendLine(const ShownRow& cells, const Layout& layout, const Widths& widths,
                const Terminal& terminal, std::string& text)
{
    std::size_t pending = 0;  // blanks are written only once something follows them
    for (std::size_t i = 0; i < cells.size(); ++i) {
        const std::size_t blanks = widths[i] > cells[i].width ? widths[i] - cells[i].width : 0;
        const bool isNumber = layout.columns[i].isNumber;
        pending += isNumber ? blanks : 0;
        if (!cells[i].text.empty()) {
            text.append(pending, ' ');
            appendStyled(cells[i], terminal, text);
            pending = 0;
        }
        pending += (isNumber ? 0 : blanks) + GAP;
    }
    text += '\n';
}

/// One row of cells, each of which may take several lines.
void appendRow(const ShownRow& cells, const Layout& layout, const Widths& widths,
               const Terminal& terminal, std::string& text)
{
    if (terminal.width == Terminal::UNLIMITED &&
        std::none_of(cells.begin(), cells.end(),
                     [](const Shown& cell) { return cell.hasLines(); })) {
        appendLine(cells, layout, widths, terminal, text);
        return;
    }
    std::vector<Lines> wrapped;
    std::size_t height = 0;
    for (std::size_t i = 0; i < cells.size(); ++i) {
        wrapped.push_back(wrappedCell(cells[i], widths[i], terminal));
        height = std::max(height, wrapped.back().size());
    }
    ShownRow ofLine = cells;
    for (std::size_t line = 0; line < height; ++line) {
        for (std::size_t i = 0; i < cells.size(); ++i) {
            ofLine[i].text = line < wrapped[i].size() ? wrapped[i][line] : std::string_view();
            ofLine[i].width = displayWidth(ofLine[i].text);
        }
        appendLine(ofLine, layout, widths, terminal, text);
    }
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
    ShownRow titles;
    for (const Layout::Column& column : layout.columns) {
        titles.push_back({column.title, displayWidth(column.title), Look::STRONG});
    }
    RowBlock block(stream);
    appendRow(titles, layout, widths, terminal, block.text());
    block.text() += renderRule(widths);
    Showing showing(table.columns.size());
    table.forEachRow([&](const TableView::Row& row) {
        appendRow(showing.show(row), layout, widths, terminal, block.text());
        block.endRow();
    });
}

/// The title, and the value beside it; below it where beside it there is too little room.
std::string renderField(const std::string& title, std::size_t titleWidth, const Shown& value,
                        const Terminal& terminal)
{
    const bool isBeside = terminal.width >= titleWidth + GAP + NARROWEST_VALUE;
    const std::size_t indent = isBeside ? titleWidth + GAP : GAP;
    std::string rendered = styled(Look::STRONG, title, terminal);
    std::string blanks = padding(indent, title);
    if (!isBeside) {
        rendered += '\n';
        blanks = std::string(indent, ' ');
    }
    for (const std::string& line : wrap(value.text, terminal.width - indent)) {
        rendered += (line.empty() ? "" : blanks + styled(value.look, line, terminal)) + '\n';
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
    Showing showing(table.columns.size());
    bool isFirst = true;
    table.forEachRow([&](const TableView::Row& row) {
        stream << (isFirst ? "" : "\n");
        isFirst = false;
        const ShownRow& cells = showing.show(row);
        for (std::size_t i = 0; i < cells.size(); ++i) {
            stream << renderField(titles[i], titleWidth, cells[i], terminal);
        }
    });
}
