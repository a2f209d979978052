#include "Output.h"

#include <nlohmann/json.hpp>
#include <stdexcept>

#include "formats.h"

void Output::print(const TableView& table)
{
    switch (m_format) {
    case Format::TABLE:
        writeTable(table, m_terminal, m_stream);
        break;
    case Format::JSON:
        writeJson(table, m_stream);
        break;
    case Format::CSV:
        writeCsv(table, m_terminal, m_stream);
        break;
    }
}

void Output::printRecords(const Table& table)
{
    writeRecords(viewOf(table), m_terminal, m_stream);
}

void Output::printJson(const nlohmann::ordered_json& value)
{
    m_stream << renderJson(value);
}

void Output::printCsvLine(const std::vector<std::string>& fields)
{
    m_stream << renderCsvLine(fields, m_terminal);
}

void Output::finish()
{
    if (!m_stream.flush()) {
        throw std::runtime_error("standard output cannot be written");
    }
}
