#include "SourceTable.h"

#include <charconv>

#include "database/stored/StoredFile.h"
#include "database/stored/valueColumns.h"
#include "text/Utf8.h"
#include "text/formatted.h"
#include "text/nullMark.h"

namespace {

constexpr std::string_view PREFIX = "texts-";
constexpr std::string_view SUFFIX = ".csv";
constexpr const char* CODE = "code";

std::vector<SourceTable::Column> columnsOf(const TableModel& table)
{
    std::vector<SourceTable::Column> columns;
    for (const TableModel::Column& column : valueColumns(table)) {
        columns.push_back({column.name, column.kind, columns.size()});
    }
    // The lookup takes no larger ones.
    columns[StoredFile::CODE] = {CODE, FieldKind::NUMBER_16, StoredFile::CODE};
    return columns;
}

std::string mistakeInNumber(const RawCell& cell, const SourceTable::Column& column)
{
    std::uint64_t number = 0;
    const char* end = cell.bytes.data() + cell.bytes.size();
    const auto [read, error] = std::from_chars(cell.bytes.data(), end, number);
    const std::uint64_t largest = largestNumber(column.kind);
    if (cell.type == CellType::INTEGER && error == std::errc() && read == end &&
        number <= largest) {
        return "";
    }
    const char* const orNull = column.position == StoredFile::CODE ? "" : ", or \\N";
    return formatted(R"("{}" is no whole number from 0 to {}{})", cell.bytes, largest, orNull);
}

std::string mistakeInText(const RawCell& cell)
{
    if (cell.type != CellType::TEXT) {
        return "is no text";
    }
    if (!utf8::isValid(cell.bytes)) {
        return "the text holds bytes that are no UTF-8";
    }
    return cell.bytes.find('\0') != std::string::npos ? "the text holds a NUL byte" : "";
}

}  // namespace

std::string textsFileOf(std::uint16_t language)
{
    return formatted("{}{}{}", PREFIX, language, SUFFIX);
}

bool isLikeTextsFile(const std::string& name)
{
    return name.rfind(PREFIX, 0) == 0 && name.size() >= PREFIX.size() + SUFFIX.size() &&
           name.substr(name.size() - SUFFIX.size()) == SUFFIX;
}

SourceTable SourceTable::ofFaultTypes()
{
    return {columnsOf(faultTypeModel())};
}

SourceTable SourceTable::ofTexts()
{
    SourceTable table = {columnsOf(descriptionsModel())};
    table.columns.erase(table.columns.begin() + StoredFile::LANGUAGE);
    return table;
}

std::uint16_t shortNumber(const RawCell& cell)
{
    std::uint16_t number = 0;
    std::from_chars(cell.bytes.data(), cell.bytes.data() + cell.bytes.size(), number);
    return number;
}

std::string mistakeIn(const RawCell& cell, const SourceTable::Column& column)
{
    if (cell.isNull()) {
        return column.position == StoredFile::CODE ? "the code is missing" : "";
    }
    return column.kind == FieldKind::TEXT ? mistakeInText(cell) : mistakeInNumber(cell, column);
}
