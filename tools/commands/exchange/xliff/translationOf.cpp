#include "translationOf.h"

#include <unordered_map>

#include "commands/exchange/SourceTable.h"
#include "text/formatted.h"
#include "translatedFields.h"

namespace {

using Rows = std::unordered_map<std::uint16_t, const StoredRow*>;  ///< by code

std::string textIn(const Rows& rows, std::uint16_t code, std::size_t position)
{
    const auto found = rows.find(code);
    return found == rows.end() ? "" : (*found->second)[position].bytes;
}

Rows textsIn(const StoredFile& content, std::uint16_t language)
{
    Rows rows;
    for (const StoredRow& row : content.texts) {
        if (shortNumber(row[StoredFile::LANGUAGE]) == language) {
            rows.emplace(shortNumber(row[StoredFile::CODE]), &row);
        }
    }
    return rows;
}

}  // namespace

Translation translationOf(const StoredFile& content, const TranslationOrder& order)
{
    Translation translation = {order.original, order.from, order.to, {}};
    const Rows sources = textsIn(content, order.from.number);
    const Rows targets = textsIn(content, order.to.number);
    for (const StoredRow& faultType : content.faultTypes) {
        const std::uint16_t code = shortNumber(faultType[StoredFile::CODE]);
        for (const TranslatedField& field : translatedFields()) {
            TranslationUnit unit;
            unit.id = formatted("{}/{}", code, field.name);
            unit.source = textIn(sources, code, field.position);
            unit.target = textIn(targets, code, field.position);
            unit.state = unit.target.empty() ? NEEDS_TRANSLATION : TRANSLATED;
            unit.alias = faultType[StoredFile::ALIAS].bytes;
            unit.comment = textIn(sources, code, commentPosition());
            if (!unit.source.empty() && (unit.target.empty() || !order.isMissingOnly)) {
                translation.units.push_back(std::move(unit));
            }
        }
    }
    return translation;
}
