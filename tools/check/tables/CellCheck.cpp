#include "CellCheck.h"

#include "database/deliveredNumber.h"
#include "text/Utf8.h"
#include "text/counted.h"
#include "text/formatted.h"

namespace {

constexpr FieldKind LOOKUP_FIELD =
    FieldKind::NUMBER_16;  // of the code that getFaultTypeDef() takes

/// The right number after zeros.
bool isPadded(std::string_view bytes, std::uint64_t number)
{
    const std::size_t start = bytes.find_first_not_of('0');
    return start == std::string_view::npos ? number == 0
                                           : bytes.substr(start) == std::to_string(number);
}

FindingKind kindOfDifference(std::string_view bytes, const std::optional<std::uint64_t>& number)
{
    if (isInteger(bytes) && !(number && isPadded(bytes, *number))) {
        return FindingKind::OUT_OF_RANGE;
    }
    return number ? FindingKind::INEXACT_NUMBER : FindingKind::NOT_A_NUMBER;
}

/// Most texts are plain and need no closer look.
struct Bytes {
    bool hasQuote = false;
    bool hasControl = false;
    bool isAscii = true;
};

Bytes bytesOf(std::string_view text)
{
    Bytes bytes;
    for (const char each : text) {
        const auto byte = static_cast<unsigned char>(each);
        bytes.hasQuote |= each == '\'';
        bytes.hasControl |= byte < 0x20 || byte == 0x7F;
        bytes.isAscii &= byte < 0x80;
    }
    return bytes;
}

bool isLayout(char32_t codePoint)
{
    return codePoint == U'\n' || codePoint == U'\r' || codePoint == U'\t';
}

/// @return the first control character that is neither line end nor tabulator.
std::optional<char32_t> firstControl(std::string_view text)
{
    while (!text.empty()) {
        const utf8::Character character = utf8::first(text);
        if (utf8::isControlCode(character.codePoint) && !isLayout(character.codePoint)) {
            return character.codePoint;
        }
        text.remove_prefix(character.length);
    }
    return std::nullopt;
}

bool hasSpaceAround(std::string_view text)
{
    return !text.empty() && (utf8::isSpace(utf8::first(text).codePoint) ||
                             utf8::isSpace(utf8::last(text).codePoint));
}

}  // namespace

CellCheck::CellCheck(const TableModel& model, const FindingSink& sink)
    : m_model(model),
      m_sink(sink),
      m_name(descriptionsColumns().name),
      m_description(descriptionsColumns().description)
{
}

void CellCheck::read(const TableRow& row)
{
    for (std::size_t column = 0; column < m_model.columns.size(); ++column) {
        const std::optional<RawCellView> cell = row.cell(column);
        if (!cell) {
            continue;
        }
        if (cell->isNull()) {
            checkNull(row, column);
        } else if (m_model.columns[column].kind == FieldKind::TEXT) {
            checkText(row, column, *cell);
        } else {
            checkNumber(row, column, *cell);
        }
    }
}

void CellCheck::checkNull(const TableRow& row, std::size_t column) const
{
    m_sink(
        m_model.columns[column].kind == FieldKind::TEXT
            ? row.finding(
                  FindingKind::NULL_VALUE, column,
                  R"(reads as "n/a", for what is not known or not there; write '' to show nothing)")
            : row.finding(FindingKind::NULL_VALUE, column,
                          "reads as 0, for what is not known; write the number once it is"));
}

void CellCheck::checkNumber(const TableRow& row, std::size_t column, const RawCellView& cell) const
{
    const TableModel::Column& model = m_model.columns[column];
    const auto number = deliveredNumber(std::string(cell.text()), model.kind);
    const std::string delivered = std::to_string(number.value_or(0));
    const bool isFilter = column == m_model.filterPosition;
    const bool isMissed = number && isFilter && !row.isFound();
    const std::string missed =
        isMissed ? ", by which " + m_model.lookup + " does not find the row" : "";
    if (!number || delivered != cell.bytes) {
        m_sink(row.finding(kindOfDifference(cell.bytes, number), column,
                           formatted("reads as {}{}; write a whole number from 0 to {}", delivered,
                                     missed, largestNumber(model.kind))));
    } else if (isMissed) {
        m_sink(row.finding(
            FindingKind::INEXACT_NUMBER, column,
            formatted("reads as {}{}; declare {} as {}, and write a number rather than a text",
                      delivered, missed, model.name, model.sqlType)));
    } else if (isBeyondLookup(column, *number)) {
        m_sink(row.finding(
            FindingKind::CODE_RANGE, column,
            formatted("delivered with the whole table, but {} cannot ask for it; use codes up to "
                      "{}",
                      m_model.lookup, largestNumber(LOOKUP_FIELD))));
    }
}

bool CellCheck::isBeyondLookup(std::size_t column, std::uint64_t number) const
{
    return m_model.columns[column].isKey && column == m_model.filterPosition &&
           number > largestNumber(LOOKUP_FIELD);
}

void CellCheck::checkText(const TableRow& row, std::size_t column, const RawCellView& cell) const
{
    checkBytes(row, column, cell);
    if (hasSpaceAround(cell.text())) {
        m_sink(row.finding(FindingKind::SURROUNDING_SPACE, column,
                           "begins or ends with white space; remove it"));
    }
    if (cell.bytes.empty() && isShownFirst(column)) {
        m_sink(
            row.finding(FindingKind::EMPTY_TEXT, column, "there is nothing to show; write a text"));
    }
}

void CellCheck::checkBytes(const TableRow& row, std::size_t column, const RawCellView& cell) const
{
    const Bytes bytes = bytesOf(cell.bytes);
    if (bytes.isAscii && !bytes.hasControl && !bytes.hasQuote) {
        return;
    }
    const std::string_view text = cell.text();
    if (text.size() < cell.bytes.size()) {
        m_sink(row.finding(FindingKind::CUT_TEXT, column,
                           formatted("reads as the {} before the NUL byte; remove the NUL byte",
                                     counted(text.size(), "byte"))));
    }
    if (!bytes.isAscii && !utf8::isValid(cell.bytes)) {
        m_sink(row.finding(FindingKind::NOT_UTF8, column,
                           "the bytes are delivered unchanged; store the text in UTF-8"));
    }
    if (const std::optional<char32_t> control = firstControl(text)) {
        m_sink(row.finding(FindingKind::CONTROL_CHARACTER, column,
                           formatted("holds the control character U+{:04X}; remove it",
                                     static_cast<unsigned>(*control))));
    }
    if (bytes.hasQuote) {
        m_sink(row.finding(FindingKind::QUOTE, column,
                           "delivered unchanged, but the library's statement texts break at the "
                           "quote; double it there"));
    }
}

bool CellCheck::isShownFirst(std::size_t column) const
{
    const std::string& name = m_model.columns[column].name;
    return name == m_name || name == m_description;
}
