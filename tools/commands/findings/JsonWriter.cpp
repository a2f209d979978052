#include "JsonWriter.h"

#include <nlohmann/json.hpp>

#include "findingText.h"
#include "output/formats.h"
#include "text/SqlText.h"
#include "text/Utf8.h"

namespace {

using Json = nlohmann::ordered_json;

Json textOrNull(const std::string& text)
{
    return text.empty() ? Json() : Json(text);
}

void addValue(Json& object, const std::string& name, const std::optional<RawCell>& value)
{
    object[name] = value ? toJson(RawCellView{value->type, value->bytes}) : Json();
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
