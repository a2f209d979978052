#include "JsonWriter.h"

#include <cmath>
#include <cstdlib>
#include <nlohmann/json.hpp>

#include "findingText.h"
#include "text/SqlText.h"
#include "text/Utf8.h"

namespace {

using Json = nlohmann::ordered_json;

Json textOrNull(const std::string& text)
{
    return text.empty() ? Json() : Json(text);
}

/// A number beyond all others is none in JSON.
Json real(const std::string& bytes)
{
    const double number = std::strtod(bytes.c_str(), nullptr);
    return std::isfinite(number) ? Json(number) : Json(bytes);
}

Json jsonOf(const RawCell& cell)
{
    switch (cell.type) {
    case CellType::NONE:
        return {};
    case CellType::INTEGER:
        return std::stoll(cell.bytes);
    case CellType::REAL:
        return real(cell.bytes);
    default:
        return cell.bytes;
    }
}

void addValue(Json& object, const std::string& name, const std::optional<RawCell>& value)
{
    object[name] = value ? jsonOf(*value) : Json();
    if (value && !utf8::isValid(value->bytes)) {
        object[name + "_hex"] = hexadecimal(value->bytes);
    }
}

}  // namespace

void JsonWriter::add(const Finding& finding)
{
    const KindInfo& info = infoOf(finding.kind);
    Json object;
    object["file"] = m_file;
    object["kind"] = info.name;
    object["severity"] = nameOf(info.severity);
    object["table"] = textOrNull(finding.table);
    object["key_column"] = textOrNull(finding.row.keyColumn);
    object["key"] = finding.row.key ? Json(*finding.row.key) : Json();
    object["column"] = textOrNull(finding.column);
    addValue(object, "value", finding.value);
    addValue(object, "delivered", finding.delivered);
    object["message"] = messageOf(finding);
    m_list.add(object);
}

void JsonWriter::end()
{
    m_list.end();
}
