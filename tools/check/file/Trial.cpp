#include "Trial.h"

#include <sqlite3.h>

#include <filesystem>

#include "BoundedProcess.h"
#include "check/tables/TableRow.h"
#include "compareLookups.h"
#include "database/Database.h"
#include "database/DatabaseErrors.h"
#include "database/LibraryLines.h"
#include "database/RawDatabase.h"
#include "integrityCheck.h"
#include "text/formatted.h"

namespace {

namespace fs = std::filesystem;

/// What a report is about, as its first character; a NUL byte ends it.
constexpr char CANNOT_BE_READ = 'U';
constexpr char IS_DAMAGED = 'D';
constexpr char LOOKUP_DIFFERS = 'L';
constexpr char LIBRARY_FAILS = 'Q';
constexpr char END = '\0';

void report(const Writer& write, char about, const std::string& words)
{
    write(about + words.substr(0, words.find(END)) + END);
}

/// Runs the queries that are not of an ordinary table as the library does: it may refuse a view, or
/// end it, that SQLite alone would go on with. Opening the file lets the library deal with the
/// journal of a writer that died, as it will on the device.
///
/// @return whether it can read them.
bool readByLibrary(const std::string& file, const Writer& write)
{
    const LibrarySilence silence;
    std::string table;
    try {
        Database library(file, 0);
        const RawDatabase database(file);
        table = faultTypeModel().name;
        if (database.isView(table)) {
            library.faultTypes();
        }
        table = descriptionsModel().name;
        if (database.isView(table)) {
            library.texts();
        }
    } catch (const UnreadableFile&) {
        if (!table.empty()) {
            report(write, LIBRARY_FAILS, table);
            return false;
        }
    } catch (const FailedQuery&) {
        return true;  // comes again, and is reported, without the library
    }
    return true;
}

void touchCells(const RawRow& row)
{
    for (int i = 0; i < row.columnCount(); ++i) {
        row.cell(i);
    }
}

/// What fails here fails again, and is reported, where the rows are looked at.
void readWhole(const RawDatabase& database, const std::string& table)
{
    try {
        database.read(formatted(R"(SELECT * FROM "{}")", table), touchCells);
    } catch (const FailedQuery&) {
        return;
    }
}

/// @throws FailedQuery
void readBySqlite(const RawDatabase& database, const std::string& file, const Writer& write)
{
    integrityCheck(file, [&](const std::string& words) { report(write, IS_DAMAGED, words); });
    readWhole(database, faultTypeModel().name);
    readWhole(database, descriptionsModel().name);
    compareLookups(database, descriptionsModel(),
                   [&](const std::string& code) { report(write, LOOKUP_DIFFERS, code); });
}

void readInEveryWay(const std::string& file, const Writer& write)
{
    if (!readByLibrary(file, write)) {
        return;
    }
    char failing = CANNOT_BE_READ;
    try {
        const RawDatabase database(file);
        failing = IS_DAMAGED;
        readBySqlite(database, file, write);
    } catch (const FailedQuery& failure) {
        report(write, failing, failure.what());
    }
}

/// Enough for the page cache and for a few values, none of which is longer than the file; but not
/// for what a file computes to do harm.
void limitMemory(std::uintmax_t fileSize)
{
    constexpr sqlite3_int64 LEAST = 128U << 20U;
    sqlite3_hard_heap_limit64(LEAST + 4 * static_cast<sqlite3_int64>(fileSize));
}

Finding unreadableFinding(const std::string& words)
{
    Finding found(FindingKind::UNREADABLE);
    found.what = "cannot be read: " + words;
    return found;
}

Finding damageFinding(const std::string& what)
{
    Finding found(FindingKind::DAMAGED);
    found.what = what + "; make the file anew from its source";
    return found;
}

Finding differentLookup(const std::string& code)
{
    const TableModel model = descriptionsModel();
    Finding found = damageFinding(model.lookup + " finds other rows by the index than a scan does");
    found.table = model.name;
    found.column = model.filterColumn().name;
    found.row = rowsWith(found.column, code);
    return found;
}

Finding failingView(const std::string& table)
{
    Finding found = damageFinding("the library cannot read the view to its end");
    found.table = table;
    return found;
}

Finding wordsOfSqlite(const std::string& words)
{
    Finding found = damageFinding("SQLite's integrity check says so");
    found.value = RawCell::ofText(words);
    return found;
}

}  // namespace

Trial::Trial(const std::string& file, const std::function<void()>& onProgress)
{
    std::error_code error;
    if (!fs::is_regular_file(file, error)) {
        add(unreadableFinding(sqlite3_errstr(SQLITE_CANTOPEN)));
        return;
    }
    const std::uintmax_t size = fs::file_size(file, error);
    if (size == 0) {
        add(unreadableFinding("the file is empty"));
        return;
    }
    limitMemory(size);  // here, too: what fails there for want of memory must not succeed here
    const std::chrono::seconds most = mostTimeFor(size);
    const ProcessResult result =
        runBounded([&](const Writer& write) { readInEveryWay(file, write); }, most, onProgress);
    m_isSafe = result.end == ProcessResult::End::DONE;
    for (std::size_t start = 0; start < result.output.size();) {
        const std::size_t end = std::min(result.output.find(END, start), result.output.size());
        take(result.output.substr(start, end - start));
        start = end + 1;
    }
    if (result.end != ProcessResult::End::DONE) {
        const bool isTime = result.end == ProcessResult::End::OUT_OF_TIME;
        add(damageFinding(
            isTime
                ? formatted("reading it does not end within {} s of processor time", most.count())
                : "reading it ends the process"));
    }
}

void Trial::take(const std::string& report)
{
    const std::string words = report.substr(1);
    switch (report.front()) {
    case CANNOT_BE_READ:
        add(unreadableFinding(words));
        m_isSafe = false;
        break;
    case LIBRARY_FAILS:
        add(failingView(words));
        m_isSafe = false;
        break;
    case LOOKUP_DIFFERS:
        add(differentLookup(words));
        break;
    default:
        add(wordsOfSqlite(words));
    }
}

Finding failedRead(const std::string& table, const std::string& words)
{
    Finding found = damageFinding("cannot be read to its end");
    found.table = table;
    found.value = RawCell::ofText(words);
    return found;
}
