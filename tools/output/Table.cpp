#include "Table.h"

namespace {

TableView::Cell viewOf(const Table::Cell& cell)
{
    const auto* number = std::get_if<std::uint64_t>(&cell);
    return number != nullptr ? TableView::Cell(*number)
                             : TableView::Cell(std::string_view(std::get<std::string>(cell)));
}

Table::Cell kept(const TableView::Cell& cell)
{
    const auto* number = std::get_if<std::uint64_t>(&cell);
    return number != nullptr ? Table::Cell(*number)
                             : Table::Cell(std::string(std::get<std::string_view>(cell)));
}

}  // namespace

TableView viewOf(const Table& table)
{
    return {table.columns, [&table](const TableView::TakeRow& take) {
                TableView::Row viewed;
                for (const Table::Row& row : table.rows) {
                    viewed.clear();
                    for (const Table::Cell& cell : row) {
                        viewed.push_back(viewOf(cell));
                    }
                    take(viewed);
                }
            }};
}

Table tableOf(const TableView& view)
{
    Table table = {view.columns, {}};
    view.forEachRow([&](const TableView::Row& row) {
        Table::Row& cells = table.rows.emplace_back();
        for (const TableView::Cell& cell : row) {
            cells.push_back(kept(cell));
        }
    });
    return table;
}

std::string cellText(const TableView::Cell& cell)
{
    const auto* number = std::get_if<std::uint64_t>(&cell);
    return number != nullptr ? std::to_string(*number)
                             : std::string(std::get<std::string_view>(cell));
}
