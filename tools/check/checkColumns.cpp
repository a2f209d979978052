#include "checkColumns.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>

#include "database/rawRows.h"

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
Names shared(const Names& ordered, const Names& other)
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
    return fmt::format("make the table anew with its columns in this order: {}",
                       fmt::join(namesOf(model), ", "));
}

/// What stands in a field that nothing is read into: the library decodes all rows, of all files,
/// into one record.
std::string unfilled(const TableModel::Column& column)
{
    return column.kind == FieldKind::TEXT
               ? "the text last read (at first an empty one) in every record"
               : "the number last read (at first 0) in every record";
}

Finding missingColumn(const TableModel& model, const TableModel::Column& column)
{
    const bool isFilter = column.name == model.filterColumn().name;
    return {"missing-column",
            model.name,
            "",
            column.name,
            "",
            unfilled(column) + (isFilter ? "; " + model.lookup + " fails" : ""),
            column.isKey || isFilter ? tableAnew(model)
                                     : fmt::format(R"(ALTER TABLE "{}" ADD COLUMN "{}" {};)",
                                                   model.name, column.name, column.sqlType),
            true};
}

Finding otherLetters(const TableModel& model, const TableModel::Column& column,
                     const std::string& name)
{
    return {"letter-case",
            model.name,
            "",
            name,
            "",
            fmt::format(R"({}: the library looks for "{}")", unfilled(column), column.name),
            fmt::format(R"(ALTER TABLE "{}" RENAME COLUMN "{}" TO "{}";)", model.name, name,
                        column.name),
            true};
}

Finding extraColumn(const TableModel& model, const std::string& name)
{
    return {"extra-column",
            model.name,
            "",
            name,
            "",
            "nothing: the library skips it",
            "keep it only if another program needs it",
            true};
}

/// What the lookup does once a query has put the columns into the file's order.
std::string lookupLater(const RawDatabase& database, const TableModel& model, const Names& names)
{
    const std::string filter =
        model.filterPosition < names.size() ? names[model.filterPosition] : "";
    if (isSameName(filter, model.filterColumn().name)) {
        return "every field right; no lookup changes";
    }
    return database.accepts(model.lookupBy(filter, "0"))
               ? fmt::format(R"(once a query has returned rows, {} finds by "{}" instead of "{}")",
                             model.lookup, filter, model.filterColumn().name)
               : fmt::format("once a query has returned rows, {} fails", model.lookup);
}

bool isOtherOrder(const TableModel& model, const Names& names)
{
    const Names expected = namesOf(model);
    const Names inFile = shared(names, expected);
    const Names inModel = shared(expected, names);
    const bool isSameOrder =
        std::equal(inFile.begin(), inFile.end(), inModel.begin(), inModel.end(), isSameName);
    const bool isSameFilter = model.filterPosition < names.size() &&
                              isSameName(names[model.filterPosition], model.filterColumn().name);
    return !isSameOrder || !isSameFilter;
}

Finding otherOrder(const RawDatabase& database, const TableModel& model, const Names& names)
{
    return {"column-order",
            model.name,
            "",
            "",
            fmt::format("{}", fmt::join(names, ", ")),
            lookupLater(database, model, names),
            tableAnew(model),
            false};
}

}  // namespace

void checkColumns(const RawDatabase& database, const TableModel& model, const RawTable& table,
                  Findings& findings)
{
    for (const TableModel::Column& column : model.columns) {
        const std::string similar = similarName(table.columns, column.name);
        if (similar.empty()) {
            findings.push_back(missingColumn(model, column));
        } else if (!contains(table.columns, column.name)) {
            findings.push_back(otherLetters(model, column, similar));
        }
    }
    for (const std::string& name : table.columns) {
        if (similarName(namesOf(model), name).empty()) {
            findings.push_back(extraColumn(model, name));
        }
    }
    if (isOtherOrder(model, table.columns)) {
        findings.push_back(otherOrder(database, model, table.columns));
    }
}
