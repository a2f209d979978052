#pragma once

#include <nlohmann/json_fwd.hpp>
#include <ostream>
#include <string>
#include <vector>

#include "Table.h"
#include "Terminal.h"

enum class Format { TABLE, JSON, CSV };

/// Where and how a command writes its results.
class Output {
public:
    Output(std::ostream& stream, const Terminal& terminal) : m_stream(stream), m_terminal(terminal)
    {
    }

    void setFormat(Format format) { m_format = format; }
    Format format() const { return m_format; }

    /// Writes a table in the chosen format.
    void print(const TableView& table);
    void print(const Table& table) { print(viewOf(table)); }

    /// Writes rows one below the other, each as a block; only where the format is Format::TABLE.
    void printRecords(const Table& table);

    void printJson(const nlohmann::ordered_json& value);

    void printCsvLine(const std::vector<std::string>& fields);

    /// @return the text so that standard output shows it like this.
    std::string styled(Look look, const std::string& text) const
    {
        return ::styled(look, text, m_terminal);
    }

    /// Writes text as it is.
    void printText(const std::string& text) { m_stream << text; }

    /// @throws std::runtime_error if not all of it could be written.
    void finish();

private:
    std::ostream& m_stream;
    Format m_format = Format::TABLE;
    Terminal m_terminal;
};
