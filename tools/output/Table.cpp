#include "Table.h"

namespace {

struct View {
    TableView::Cell operator()(std::uint64_t number) const { return number; }
    TableView::Cell operator()(const std::string& text) const { return std::string_view(text); }
    TableView::Cell operator()(const RawCell& cell) const
    {
        return RawCellView{cell.type, cell.bytes};
    }
};

struct Keep {
    Table::Cell operator()(std::uint64_t number) const { return number; }
    Table::Cell operator()(std::string_view text) const { return std::string(text); }
    Table::Cell operator()(const RawCellView& cell) const { return RawCell(cell); }
};

struct Show {
    std::string operator()(std::uint64_t number) const { return std::to_string(number); }
    std::string operator()(std::string_view text) const { return std::string(text); }
    std::string operator()(const RawCellView& cell) const
    {
        return cell.isNull() ? "NULL" : std::string(cell.bytes);
    }
};

}  // namespace

TableView viewOf(const Table& table)
{
    return {table.columns, [&table](const TableView::TakeRow& take) {
                TableView::Row viewRow;
                for (const Table::Row& row : table.rows) {
                    viewRow.clear();
                    for (const Table::Cell& cell : row) {
                        viewRow.push_back(viewOf(cell));
                    }
                    take(viewRow);
                }
            }};
}

Table tableOf(const TableView& view)
{
    Table table = {view.columns, {}};
    view.forEachRow([&](const TableView::Row& row) {
        Table::Row& cells = table.rows.emplace_back();
        for (const TableView::Cell& cell : row) {
            cells.push_back(ownedCell(cell));
        }
    });
    return table;
}

TableView::Cell viewOf(const Table::Cell& cell)
{
    return std::visit(View(), cell);
}

Table::Cell ownedCell(const TableView::Cell& cell)
{
    return std::visit(Keep(), cell);
}

std::string cellText(const TableView::Cell& cell)
{
    return std::visit(Show(), cell);
}

bool isNull(const TableView::Cell& cell)
{
    const auto* stored = std::get_if<RawCellView>(&cell);
    return stored != nullptr && stored->isNull();
}
