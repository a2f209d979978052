#include "translatedFields.h"

#include <algorithm>

#include "commands/exchange/SourceTable.h"

namespace {

constexpr const char* COMMENT_COLUMN = "comment";

}  // namespace

const std::vector<TranslatedField>& translatedFields()
{
    static const std::vector<TranslatedField> fields = [] {
        std::vector<TranslatedField> translated;
        for (const SourceTable::Column& column : SourceTable::ofTexts().columns) {
            if (column.kind == FieldKind::TEXT && column.name != COMMENT_COLUMN) {
                translated.push_back({column.name, column.position});
            }
        }
        return translated;
    }();
    return fields;
}

std::size_t commentPosition()
{
    const std::vector<SourceTable::Column> columns = SourceTable::ofTexts().columns;
    return std::find_if(
               columns.begin(), columns.end(),
               [](const SourceTable::Column& column) { return column.name == COMMENT_COLUMN; })
        ->position;
}
