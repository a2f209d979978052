#include "compareStored.h"

#include <map>
#include <tuple>

#include "valueColumns.h"

namespace {

/// A cell by which rows are sorted: numbers come before all else, by their value.
struct KeyCell {
    explicit KeyCell(const RawCell& cell)
        : type(cell.type),
          number(cell.type == CellType::INTEGER ? std::stoll(cell.bytes) : 0),
          bytes(cell.bytes)
    {
    }

    bool operator<(const KeyCell& other) const
    {
        return std::tie(type, number, bytes) < std::tie(other.type, other.number, other.bytes);
    }

    CellType type;
    long long number;
    std::string bytes;
};

struct Key {
    KeyCell code;
    std::optional<KeyCell> language;  ///< nothing: of a fault type, which comes before its texts
    std::size_t occurrence;           ///< of several rows with the same code and language

    bool operator<(const Key& other) const
    {
        return std::tie(code, language, occurrence) <
               std::tie(other.code, other.language, other.occurrence);
    }
};

/// The row of each file; null: it has none.
struct Pair {
    const StoredRow* before = nullptr;
    const StoredRow* after = nullptr;
};

using Pairs = std::map<Key, Pair>;

void addRows(const std::vector<StoredRow>& rows, bool areTexts, const StoredRow* Pair::*side,
             Pairs& pairs)
{
    std::map<Key, std::size_t> counts;
    for (const StoredRow& row : rows) {
        Key key = {KeyCell(row[StoredFile::CODE]), std::nullopt, 0};
        if (areTexts) {
            key.language.emplace(row[StoredFile::LANGUAGE]);
        }
        key.occurrence = counts[key]++;
        pairs[key].*side = &row;
    }
}

void addFile(const StoredFile& file, const StoredRow* Pair::*side, Pairs& pairs)
{
    addRows(file.faultTypes, false, side, pairs);
    addRows(file.texts, true, side, pairs);
}

bool isSame(const RawCell& one, const RawCell& other)
{
    return one.type == other.type && one.bytes == other.bytes;
}

std::vector<std::string> namesOf(const TableModel& table)
{
    std::vector<std::string> names;
    for (const TableModel::Column& column : valueColumns(table)) {
        names.push_back(column.name);
    }
    return names;
}

Change::Kind kindOf(const Pair& pair)
{
    if (pair.before == nullptr) {
        return Change::Kind::ADDED;
    }
    return pair.after == nullptr ? Change::Kind::REMOVED : Change::Kind::CHANGED;
}

/// @param first  the first column that is no key.
std::vector<FieldChange> fieldsOf(const Pair& pair, const std::vector<std::string>& names,
                                  std::size_t first)
{
    std::vector<FieldChange> fields;
    for (std::size_t i = first; i < names.size(); ++i) {
        FieldChange field = {names[i], std::nullopt, std::nullopt};
        if (pair.before != nullptr) {
            field.before = (*pair.before)[i];
        }
        if (pair.after != nullptr) {
            field.after = (*pair.after)[i];
        }
        if (!field.before || !field.after || !isSame(*field.before, *field.after)) {
            fields.push_back(std::move(field));
        }
    }
    return fields;
}

}  // namespace

std::vector<Change> compareStored(const StoredFile& before, const StoredFile& after)
{
    const std::vector<std::string> faultTypeNames = namesOf(faultTypeModel());
    const std::vector<std::string> textNames = namesOf(descriptionsModel());
    Pairs pairs;
    addFile(before, &Pair::before, pairs);
    addFile(after, &Pair::after, pairs);
    std::vector<Change> changes;
    for (const auto& [key, pair] : pairs) {
        std::vector<FieldChange> fields = key.language
                                              ? fieldsOf(pair, textNames, StoredFile::NAME)
                                              : fieldsOf(pair, faultTypeNames, StoredFile::ALIAS);
        if (!fields.empty()) {
            const StoredRow& row = pair.after != nullptr ? *pair.after : *pair.before;
            changes.push_back(
                {kindOf(pair), row[StoredFile::CODE],
                 key.language ? std::optional(row[StoredFile::LANGUAGE]) : std::nullopt,
                 std::move(fields)});
        }
    }
    return changes;
}
