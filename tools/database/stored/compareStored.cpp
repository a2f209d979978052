#include "compareStored.h"

#include <map>
#include <tuple>

#include "valueColumns.h"

namespace {

/// Numbers come before all else, by their value.
bool isLess(const RawCell& one, const RawCell& other)
{
    if (one.type == CellType::INTEGER && other.type == CellType::INTEGER) {
        return std::stoll(one.bytes) < std::stoll(other.bytes);
    }
    return std::tie(one.type, one.bytes) < std::tie(other.type, other.bytes);
}

struct Key {
    RawCell code;
    std::optional<RawCell> language;
    std::size_t occurrence;  ///< of several rows with the same code and language

    bool operator<(const Key& other) const
    {
        if (isLess(code, other.code) || isLess(other.code, code)) {
            return isLess(code, other.code);
        }
        const RawCell none(CellType::NONE, "");
        const RawCell& own = language.value_or(none);
        const RawCell& others = other.language.value_or(none);
        if (language.has_value() != other.language.has_value()) {
            return !language.has_value();
        }
        if (isLess(own, others) || isLess(others, own)) {
            return isLess(own, others);
        }
        return occurrence < other.occurrence;
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
        Key key = {row[StoredFile::CODE],
                   areTexts ? std::optional(row[StoredFile::LANGUAGE]) : std::nullopt, 0};
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
            changes.push_back({kindOf(pair), key.code, key.language, std::move(fields)});
        }
    }
    return changes;
}
