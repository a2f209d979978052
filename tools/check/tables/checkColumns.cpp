#include "checkColumns.h"
#include "text/formatted.h"

#include <sqlite3.h>

#include <algorithm>

namespace {

using Names = std::vector<std::string>;

Names namesOf(const TableModel& model)
{
    Names names;
    for (const TableModel::Column& column : model.columns) {
        names.push_back(column.name);
    }
    return names;
}

/// @return whether names are the same to SQLite, which does not tell a from A.
bool isSameName(const std::string& one, const std::string& other)
{
    return sqlite3_stricmp(one.c_str(), other.c_str()) == 0;
}

bool contains(const Names& names, const std::string& name)
{
    return std::find(names.begin(), names.end(), name) != names.end();
}

/// The name that is the same to SQLite; empty if there is none.
std::string similarName(const Names& names, const std::string& name)
{
    const auto found = std::find_if(names.begin(), names.end(), [&](const std::string& other) {
        return isSameName(name, other);
    });
    return found != names.end() ? *found : "";
}

/// The names that the model and the file share, letter case aside, in the order of the first list
/// and its writing.
Names commonNames(const Names& ordered, const Names& other)
{
    Names names;
    for (const std::string& name : ordered) {
        if (!similarName(other, name).empty()) {
            names.push_back(name);
        }
    }
    return names;
}

std::string tableAnew(const TableModel& model)
{
    return formatted("make the table anew with its columns in this order: {}",
                     listed(namesOf(model), ", "));
}

/// What stands in a field that nothing is read into: the library decodes all rows, of all files,
/// into one record.
std::string unfilledText(const TableModel::Column& column)
{
    return column.kind == FieldKind::TEXT
               ? "every record holds the text last read (at first an empty one)"
               : "every record holds the number last read (at first 0)";
}

Finding columnFinding(FindingKind kind, const TableModel& model, const std::string& column,
                      const std::string& what)
{
    Finding found(kind);
    found.table = model.name;
    found.column = column;
    found.what = what;
    return found;
}

Finding missingColumn(const TableModel& model, const TableModel::Column& column)
{
    const bool isFilter = column.name == model.filterColumn().name;
    return columnFinding(
        FindingKind::MISSING_COLUMN, model, column.name,
        formatted("{}{}; {}", unfilledText(column),
                  isFilter ? ", and " + model.lookup + " fails" : "",
                  column.isKey || isFilter ? tableAnew(model)
                                           : formatted(R"(ALTER TABLE "{}" ADD COLUMN "{}" {};)",
                                                       model.name, column.name, column.sqlType)));
}

Finding otherLetters(const TableModel& model, const TableModel::Column& column,
                     const std::string& name)
{
    return columnFinding(FindingKind::LETTER_CASE, model, name,
                         formatted(R"(the library looks for "{0}", so that {1}; )"
                                   R"(ALTER TABLE "{2}" RENAME COLUMN "{3}" TO "{0}";)",
                                   column.name, unfilledText(column), model.name, name));
}

Finding extraColumn(const TableModel& model, const std::string& name)
{
    return columnFinding(FindingKind::EXTRA_COLUMN, model, name,
                         "the library skips it; keep it only if another program needs it");
}

/// What the lookup does once a query has put the columns into the file's order.
std::string lookupLater(const RawDatabase& database, const TableModel& model, const Names& names)
{
    const std::string filter =
        model.filterPosition < names.size() ? names[model.filterPosition] : "";
    if (isSameName(filter, model.filterColumn().name)) {
        return "no lookup changes";
    }
    return database.accepts(model.lookupBy(filter, "0"))
               ? formatted(R"(once a query has returned rows, {} finds by "{}" instead of "{}")",
                           model.lookup, filter, model.filterColumn().name)
               : formatted("once a query has returned rows, {} fails", model.lookup);
}

bool isOtherOrder(const TableModel& model, const Names& names)
{
    const Names expected = namesOf(model);
    const Names inFile = commonNames(names, expected);
    const Names inModel = commonNames(expected, names);
    const bool isSameOrder =
        std::equal(inFile.begin(), inFile.end(), inModel.begin(), inModel.end(), isSameName);
    const bool isSameFilter = model.filterPosition < names.size() &&
                              isSameName(names[model.filterPosition], model.filterColumn().name);
    return !isSameOrder || !isSameFilter;
}

Finding otherOrder(const RawDatabase& database, const TableModel& model, const Names& names)
{
    const std::string what = formatted("the columns stand in another order: {}; {}",
                                       lookupLater(database, model, names), tableAnew(model));
    Finding found = columnFinding(FindingKind::COLUMN_ORDER, model, "", what);
    found.value = RawCell::ofText(listed(names, ", "));
    return found;
}

}  // namespace

void checkColumns(const RawDatabase& database, const TableModel& model, const Names& names,
                  const FindingSink& sink)
{
    for (const TableModel::Column& column : model.columns) {
        const std::string similar = similarName(names, column.name);
        if (similar.empty()) {
            sink(missingColumn(model, column));
        } else if (!contains(names, column.name)) {
            sink(otherLetters(model, column, similar));
        }
    }
    for (const std::string& name : names) {
        if (similarName(namesOf(model), name).empty()) {
            sink(extraColumn(model, name));
        }
    }
    if (isOtherOrder(model, names)) {
        sink(otherOrder(database, model, names));
    }
}
