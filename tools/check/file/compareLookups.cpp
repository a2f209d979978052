#include "compareLookups.h"
#include "text/formatted.h"

#include <map>
#include <vector>

namespace {

/// Some rows, whatever their order.
struct Rows {
    std::uint64_t count = 0;
    std::uint64_t sum = 0;

    void add(std::uint64_t row)
    {
        ++count;
        sum += row;
    }

    bool operator!=(const Rows& other) const { return count != other.count || sum != other.sum; }
};

using RowsByNumber = std::map<std::int64_t, Rows>;

/// @param first  the first of the columns that belong to the row itself.
std::uint64_t fingerprint(const RawRow& row, int first)
{
    constexpr std::uint64_t MULTIPLIER = 0x9E3779B97F4A7C15;
    std::uint64_t sum = 1;
    for (int i = first; i < row.columnCount(); ++i) {
        const RawCellView cell = row.cell(i);
        const std::uint64_t text = std::hash<std::string_view>()(cell.bytes);
        sum = (sum ^ text ^ static_cast<std::uint64_t>(cell.type)) * MULTIPLIER;
        sum ^= sum >> 29U;
    }
    return sum;
}

/// The rows that the lookup of each number should find.
RowsByNumber rowsOfScan(const RawDatabase& database, const TableModel& model)
{
    const std::string number =
        formatted("delivered({}, {})", model.filterColumn().name,
                  static_cast<int>(FieldKind::NUMBER_32));  // of the argument of the lookup
    const std::string scan = formatted(R"(SELECT {0}, {1}{2}{0}, * FROM "{3}" NOT INDEXED)", number,
                                       model.filterColumn().name, model.comparison, model.name);
    RowsByNumber rows;
    if (!database.accepts(scan)) {
        return rows;  // a view, or as many columns as SQLite allows
    }
    database.read(scan, [&](const RawRow& row) {
        constexpr int FIRST = 2;
        if (row.cell(1).bytes == "1") {
            rows[std::stoll(std::string(row.cell(0).bytes))].add(fingerprint(row, FIRST));
        }
    });
    return rows;
}

/// An application asks for the texts of the fault types that there are, with texts or without.
void addCodes(const RawDatabase& database, RowsByNumber& rows)
{
    const TableModel faultTypes = faultTypeModel();
    const std::string codes =
        formatted(R"(SELECT delivered({}, {}) FROM "{}")", faultTypes.keyColumn().name,
                  static_cast<int>(FieldKind::NUMBER_32), faultTypes.name);
    if (database.accepts(codes)) {
        database.read(codes, [&](const RawRow& row) {
            rows[std::stoll(
                std::string(row.cell(0).bytes))];  // none, unless there are some already
        });
    }
}

RowsByNumber rowsOfLookup(const RawDatabase& database, const TableModel& model,
                          const std::vector<std::int64_t>& numbers)
{
    RowsByNumber rows;
    database.readFor(numbers, model.lookupOf("?1"), [&](std::int64_t number, const RawRow& row) {
        rows[number].add(fingerprint(row, 0));
    });
    return rows;
}

}  // namespace

void compareLookups(const RawDatabase& database, const TableModel& model,
                    const std::function<void(const std::string&)>& report)
{
    const std::string lookup = model.lookupOf("0");
    if (!database.accepts(lookup) || database.readsWholeTable(lookup)) {
        return;
    }
    RowsByNumber scanned = rowsOfScan(database, model);
    if (scanned.empty()) {
        return;
    }
    addCodes(database, scanned);
    std::vector<std::int64_t> numbers;
    for (const auto& [number, rows] : scanned) {
        numbers.push_back(number);
    }
    RowsByNumber found = rowsOfLookup(database, model, numbers);
    for (const auto& [number, rows] : scanned) {
        if (found[number] != rows) {
            report(std::to_string(number));
        }
    }
}
