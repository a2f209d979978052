// Any result, as a database could deliver it, through the column matching, the decoder and the
// statement texts of both tables.
//
// An input is a text: a line of column names, then a line per row; names and cells are separated by
// '|', a cell "NULL" is an SQL NULL.

#include <iostream>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "expect.h"
#include "target.h"
#include "zav/Descriptions.h"
#include "zav/FaultTypeDef.h"
#include "zav/ZavSqlDescriptionsTbl.h"
#include "zav/ZavSqlFaultTypeDefTbl.h"

namespace {

std::vector<std::string> split(const std::string& text, char separator)
{
    std::vector<std::string> pieces;
    std::istringstream stream(text);
    for (std::string piece; std::getline(stream, piece, separator);) {
        pieces.push_back(piece);
    }
    return pieces;
}

/// @return the row's cells, one for each of `count` columns; they point into `texts`.
std::vector<char*> cellsOf(std::vector<std::string>& texts, std::size_t count)
{
    std::vector<char*> cells(count, nullptr);
    for (std::size_t i = 0; i < count && i < texts.size(); ++i) {
        cells[i] = texts[i] == "NULL" ? nullptr : texts[i].data();
    }
    return cells;
}

/// What a number cell is by the rules of an input stream.
template <class Number>
Number numberOf(const char* cell)
{
    std::istringstream stream(cell != nullptr ? cell : "");
    Number number = 0;
    stream >> number;
    return stream.fail() ? Number(0) : number;
}

template <class Table>
void expectDecoded(const typename Table::column_t& column, const char* cell)
{
    switch (column.valueType) {
    case Table::VALUE_TYPE_UINT32:
        expect(*static_cast<const std::uint32_t*>(column.pValue) == numberOf<std::uint32_t>(cell),
               "32-bit number as a stream reads it");
        break;
    case Table::VALUE_TYPE_UINT16:
        expect(*static_cast<const std::uint16_t*>(column.pValue) == numberOf<std::uint16_t>(cell),
               "16-bit number as a stream reads it");
        break;
    case Table::VALUE_TYPE_STRING:
        expect(*static_cast<const std::string*>(column.pValue) == (cell != nullptr ? cell : "n/a"),
               "text as it is");
        break;
    default:
        break;
    }
}

template <class Table>
bool isBoundOnce(const Table& table, const void* field)
{
    int bound = 0;
    for (const auto& column : table.columns) {
        bound += column.pValue == field ? 1 : 0;
    }
    return bound == 1;
}

template <class Table>
void writeStatements(const Table& table)
{
    try {
        expect(table.getSqlInsertValues().back() == ')', "an INSERT text ends with its bracket");
        table.getSqlUpdateValues();
    } catch (const std::out_of_range&) {
        // no column, or none beside the key
    }
}

template <class Table>
void decode(const std::vector<std::string>& lines)
{
    Table table("table");
    const std::vector<std::string> names = split(lines.front(), '|');
    table.reorderColumns(names);
    expect(names.empty() || table.columns.size() == names.size(), "one column for each name");
    for (std::size_t row = 1; row < lines.size(); ++row) {
        std::vector<std::string> texts = split(lines[row], '|');
        std::vector<char*> cells = cellsOf(texts, table.columns.size());
        table.setDatafromSqlResult(cells.data());
        for (std::size_t i = 0; i < cells.size(); ++i) {
            if (isBoundOnce(table, table.columns[i].pValue)) {
                expectDecoded<Table>(table.columns[i], cells[i]);
            }
        }
    }
    writeStatements(table);
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    std::cout.setstate(std::ios_base::badbit);  // no lines: they are not what is tried
    const std::vector<std::string> lines = split(std::string(data, data + size), '\n');
    if (!lines.empty()) {
        decode<ZavSqlFaultTypeDefTbl>(lines);
        decode<ZavSqlDescriptionsTbl>(lines);
    }
    return 0;
}
