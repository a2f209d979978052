#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

struct CsvRecord {
    std::size_t line = 0;  ///< where it begins, from 1
    std::vector<std::string> cells;
    std::string mistake;  ///< what is wrong with its quotes or line ends; empty: nothing
};

/// Reads CSV as RFC 4180 has it, and as spreadsheets write it: after a byte order mark, with
/// semicolons between the cells, and with line ends of one character. Empty lines are skipped.
class CsvReader {
public:
    /// @param text  must live as long as the reader.
    explicit CsvReader(std::string_view text);

    /// @return false at the end of the text; else the record is the next one, as far as it could be
    ///         read.
    bool next(CsvRecord& record);

private:
    bool skipLineEnd();
    void readRecord(CsvRecord& record);
    void readPlainCell(CsvRecord& record, std::string& cell);
    void readQuotedCell(CsvRecord& record, std::string& cell);
    std::size_t cellEnd() const;

    std::string_view m_text;
    char m_separator;
    std::size_t m_position = 0;
    std::size_t m_line = 1;
};
