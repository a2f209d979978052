#include "CsvReader.h"

#include <algorithm>

namespace {

constexpr std::string_view BYTE_ORDER_MARK = "\xEF\xBB\xBF";

/// The first sign between cells, which the names of columns do not hold.
char separatorOf(std::string_view text)
{
    const std::size_t found = text.find_first_of(",;\n");
    return found != std::string_view::npos && text[found] == ';' ? ';' : ',';
}

std::string_view withoutMark(std::string_view text)
{
    const bool isMarked = text.substr(0, BYTE_ORDER_MARK.size()) == BYTE_ORDER_MARK;
    return isMarked ? text.substr(BYTE_ORDER_MARK.size()) : text;
}

}  // namespace

CsvReader::CsvReader(std::string_view text)
    : m_text(withoutMark(text)), m_separator(separatorOf(m_text))
{
}

bool CsvReader::next(CsvRecord& record)
{
    while (skipLineEnd()) {
    }
    if (m_position >= m_text.size()) {
        return false;
    }
    record = {};
    record.line = m_line;
    readRecord(record);
    return true;
}

/// @return whether there was one.
bool CsvReader::skipLineEnd()
{
    const std::string_view rest = m_text.substr(m_position);
    const std::size_t length = rest.substr(0, 2) == "\r\n" ? 2 : 1;
    if (rest.empty() || (length == 1 && rest.front() != '\n')) {
        return false;
    }
    m_position += length;
    ++m_line;
    return true;
}

void CsvReader::readRecord(CsvRecord& record)
{
    for (;;) {
        std::string& cell = record.cells.emplace_back();
        if (m_position < m_text.size() && m_text[m_position] == '"') {
            readQuotedCell(record, cell);
        }
        readPlainCell(record, cell);
        if (m_position < m_text.size() && m_text[m_position] == m_separator) {
            ++m_position;
        } else {
            skipLineEnd();
            return;
        }
    }
}

/// What follows closing quotes, too, which should be nothing.
void CsvReader::readPlainCell(CsvRecord& record, std::string& cell)
{
    const std::size_t start = m_position;
    m_position = cellEnd();
    const std::string_view plain = m_text.substr(start, m_position - start);
    const bool isAfterQuotes = start > 0 && m_text[start - 1] == '"';
    if (!plain.empty() && isAfterQuotes) {
        record.mistake = "a text goes on after its closing quote";
    } else if (plain.find('"') != std::string_view::npos) {
        record.mistake = "a quote stands in a text without quotes around it";
    } else if (plain.find('\r') != std::string_view::npos) {
        record.mistake = "a carriage return stands in a text without quotes around it";
    }
    cell += plain;
}

void CsvReader::readQuotedCell(CsvRecord& record, std::string& cell)
{
    for (;;) {
        const std::size_t start = m_position + 1;
        const std::size_t end = m_text.find('"', start);
        const std::string_view part = m_text.substr(start, end - start);
        cell += part;
        m_line += static_cast<std::size_t>(std::count(part.begin(), part.end(), '\n'));
        if (end == std::string_view::npos) {
            record.mistake = "the closing quote of a text is missing";
            m_position = m_text.size();
            return;
        }
        m_position = end + 1;
        if (m_position >= m_text.size() || m_text[m_position] != '"') {
            return;
        }
        cell += '"';
    }
}

/// @return the position of the next separator or line end.
std::size_t CsvReader::cellEnd() const
{
    std::size_t end = m_position;
    while (end < m_text.size() && m_text[end] != m_separator && m_text[end] != '\n') {
        ++end;
    }
    const bool isAfterReturn =
        end > m_position && end < m_text.size() && m_text[end] == '\n' && m_text[end - 1] == '\r';
    return isAfterReturn ? end - 1 : end;
}
