#include "JsonList.h"

#include "formats.h"

#include <nlohmann/json.hpp>

void JsonList::add(const nlohmann::ordered_json& element)
{
    m_output.printText(m_isEmpty ? "[" : ",");
    m_output.printText(jsonLineEnd(m_depth + 1) + jsonText(element, m_depth + 1));
    m_isEmpty = false;
}

void JsonList::end()
{
    m_output.printText(m_isEmpty ? "[]" : jsonLineEnd(m_depth) + "]");
    if (m_depth == 0) {
        m_output.printText("\n");
    }
}
