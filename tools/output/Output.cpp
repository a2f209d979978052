#include "Output.h"

#include <nlohmann/json.hpp>
#include <stdexcept>

#include "formats.h"

void Output::print(const Table& table)
{
    switch (m_format) {
    case Format::TABLE:
        m_stream << renderTable(table, m_terminal);
        break;
    case Format::JSON:
        printJson(toJson(table));
        break;
    case Format::CSV:
        m_stream << renderCsv(table, m_terminal);
        break;
    }
}

void Output::printRecords(const Table& table)
{
    m_stream << renderRecords(table, m_terminal);
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
