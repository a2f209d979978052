#include "checkContents.h"

#include "database/DatabaseErrors.h"
#include "file/Trial.h"
#include "relations/AliasCheck.h"
#include "relations/CodeSet.h"
#include "relations/LanguageCheck.h"
#include "relations/TranslationCheck.h"
#include "relations/TypeCheck.h"
#include "tables/CellCheck.h"
#include "tables/KeyCheck.h"
#include "tables/checkColumns.h"
#include "text/formatted.h"

namespace {

using Checks = std::vector<RowCheck*>;

/// Reads one table and lets checks see its rows.
class TableReading {
public:
    TableReading(const RawDatabase& database, const TableModel& model, const CheckOptions& options,
                 const FindingSink& sink)
        : m_database(database), m_model(model), m_options(options), m_sink(sink)
    {
    }

    /// @return whether there is such a table; its columns are checked then.
    bool open()
    {
        const auto names = m_database.columnsOf(m_model.name);
        if (!names) {
            m_sink(missingTable());
            return false;
        }
        m_positions = positionsOf(m_model, *names);
        m_columnCount = static_cast<int>(names->size());
        checkColumns(m_database, m_model, *names, m_sink);
        return true;
    }

    bool hasColumn(const std::string& name) const
    {
        return m_positions[m_model.positionOf(name)].has_value();
    }

    /// @return whether the table could be read to its end.
    bool run(const Checks& checks) const
    {
        try {
            forEachRow([&](const TableRow& row) {
                for (RowCheck* check : checks) {
                    check->read(row);
                }
            });
            runAgain(checks);
        } catch (const FailedQuery& failure) {
            m_sink(failedRead(m_model.name, failure.what()));
            return false;
        }
        return true;
    }

private:
    void runAgain(const Checks& checks) const
    {
        bool isWanted = false;
        for (RowCheck* check : checks) {
            isWanted |= check->finish();
        }
        if (!isWanted) {
            return;
        }
        forEachRow([&](const TableRow& row) {
            for (RowCheck* check : checks) {
                check->readAgain(row);
            }
        });
    }

    void forEachRow(const std::function<void(const TableRow&)>& take) const
    {
        constexpr std::size_t ROWS_PER_PROGRESS = 1024;
        // With all columns, as the library: by fewer, SQLite may read an index in another order.
        const std::string plain = formatted(R"(SELECT * FROM "{}")", m_model.name);
        const std::string asking = formatted(
            R"(SELECT *, {0}{1}delivered({0}, {2}) FROM "{3}")", m_model.filterColumn().name,
            m_model.comparison, static_cast<int>(m_model.filterColumn().kind), m_model.name);
        // Not where the table has as many columns as SQLite allows.
        const bool canAsk = m_database.accepts(asking);
        std::size_t number = 0;
        m_database.read(canAsk ? asking : plain, [&](const RawRow& row) {
            if (++number % ROWS_PER_PROGRESS == 0) {
                m_options.onProgress();
            }
            const bool isFound = !canAsk || row.cell(m_columnCount).bytes == "1";
            take(TableRow(m_model, m_positions, row, number, isFound));
        });
    }

    Finding missingTable() const
    {
        Finding found(FindingKind::MISSING_TABLE);
        found.table = m_model.name;
        found.what =
            "there is no such table, and every query of it fails; create it as zav(1) shows";
        return found;
    }

    const RawDatabase& m_database;
    const TableModel& m_model;
    const CheckOptions& m_options;
    const FindingSink& m_sink;
    ColumnPositions m_positions;
    int m_columnCount = 0;
};

Finding missingIndex(const TableModel& model)
{
    const std::string& column = model.filterColumn().name;
    Finding found(FindingKind::MISSING_INDEX);
    found.table = model.name;
    found.column = column;
    found.what = formatted(
        "{0} reads the whole table; "
        R"(CREATE INDEX "{1}_{2}" ON "{1}" ("{2}");)",
        model.lookup, model.name, column);
    return found;
}

/// @return whether all codes are known then.
bool checkFaultTypes(TableReading& reading, const TableModel& model, CodeSet& codes,
                     const FindingSink& sink)
{
    if (!reading.open()) {
        return false;
    }
    CellCheck cells(model, sink);
    KeyCheck keys(model, sink);
    AliasCheck aliases(model, sink);
    TypeCheck types(model, sink);
    return reading.run({&cells, &keys, &codes, &aliases, &types}) &&
           reading.hasColumn(faultTypeColumns().code);
}

/// @param codes  of the fault types; null: not known.
void checkDescriptions(TableReading& reading, const TableModel& model, const CodeSet* codes,
                       const CheckOptions& options, const FindingSink& sink)
{
    if (!reading.open()) {
        return;
    }
    CellCheck cells(model, sink);
    KeyCheck keys(model, sink);
    TranslationCheck translations(model, sink);
    Checks checks = {&cells, &keys, &translations};
    std::optional<LanguageCheck> languages;
    if (codes != nullptr && reading.hasColumn(descriptionsColumns().faultType) &&
        reading.hasColumn(descriptionsColumns().language)) {
        checks.push_back(&languages.emplace(model, *codes, options.languages, sink));
    }
    reading.run(checks);
}

}  // namespace

void checkContents(const RawDatabase& database, const CheckOptions& options,
                   const FindingSink& sink)
{
    const TableModel faultTypes = faultTypeModel();
    const TableModel descriptions = descriptionsModel();
    TableReading faultTypeReading(database, faultTypes, options, sink);
    TableReading descriptionsReading(database, descriptions, options, sink);

    CodeSet codes(faultTypes);
    const bool areCodesKnown = checkFaultTypes(faultTypeReading, faultTypes, codes, sink);
    checkDescriptions(descriptionsReading, descriptions, areCodesKnown ? &codes : nullptr, options,
                      sink);
    if (database.readsWholeTable(descriptions.lookupOf("0"))) {
        sink(missingIndex(descriptions));
    }
}
