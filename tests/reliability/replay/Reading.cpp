#include "Reading.h"

#include <sqlite3.h>

#include <memory>
#include <sstream>
#include <vector>

#include "support/CoutCapture.h"
#include "support/records.h"
#include "zav/DescriptionDb.h"

namespace {

constexpr unsigned short LOOKED_UP = 3;

template <class Record>
void write(std::ostream& stream, const Record& record)
{
    std::apply([&stream](const auto&... fields) { ((stream << fields << '|'), ...); },
               fieldsOf(record));
    stream << '\n';
}

template <class Record>
void write(std::ostream& stream, const std::vector<Record>& records)
{
    for (const Record& record : records) {
        write(stream, record);
    }
}

/// The same questions as readAll() asks; the last one through the index, as the service's.
constexpr const char* ALL_QUESTIONS =
    "SELECT * FROM fault_type_definition;"
    "SELECT * FROM descriptions;"
    "SELECT * FROM fault_type_definition WHERE code LIKE 3;"
    "SELECT * FROM descriptions INDEXED BY descriptions_id_fault_type WHERE id_fault_type=3;";

bool readAll(DescriptionDb& service, std::ostream& stream)
{
    std::vector<FaultTypeDef> faultTypes;
    std::vector<Descriptions> descriptions;
    FaultTypeDef faultType;
    std::vector<Descriptions> texts;
    if (service.getFaultTypeDefTbl(faultTypes) < 0 ||
        service.getDescriptionsTbl(descriptions) < 0 ||
        service.getFaultTypeDef(LOOKED_UP, faultType) < 0 ||
        service.getDescriptionsByFC(LOOKED_UP, texts) < 0) {
        return false;
    }
    write(stream, faultTypes);
    write(stream, descriptions);
    write(stream, faultType);
    write(stream, texts);
    return true;
}

/// A NULL, which the service would read as "n/a" or 0, is only in a file that is damaged already.
int appendRow(void* text, int columns, char** cells, char** /*names*/)
{
    for (int i = 0; i < columns; ++i) {
        *static_cast<std::string*>(text) += std::string(cells[i] != nullptr ? cells[i] : "") + '|';
    }
    *static_cast<std::string*>(text) += '\n';
    return 0;
}

Reading run(const std::string& uri, const char* sql)
{
    sqlite3* opened = nullptr;
    sqlite3_open_v2(uri.c_str(), &opened, SQLITE_OPEN_READWRITE | SQLITE_OPEN_URI, nullptr);
    const std::unique_ptr<sqlite3, decltype(&sqlite3_close)> db(opened, sqlite3_close);
    std::string text;
    if (sqlite3_exec(db.get(), sql, appendRow, &text, nullptr) != SQLITE_OK) {
        return {false, sqlite3_errmsg(db.get())};
    }
    return {true, text};
}

}  // namespace

Reading readThroughService(const std::string& file)
{
    const CoutCapture output;
    std::ostringstream text;
    DescriptionDb& service = *DescriptionDb::getInstance();
    service.setDbgLevel(0);
    const bool hasSucceeded = service.openDb(file, true) == 0 && readAll(service, text);
    service.closeDb();
    const std::string lines = output.text();
    return {hasSucceeded, hasSucceeded ? text.str() : lines.substr(0, lines.find('\n'))};
}

Reading readThroughSqlite(const std::string& file)
{
    return run("file:" + file, ALL_QUESTIONS);
}

Reading readPastJournal(const std::string& file)
{
    return run("file:" + file + "?immutable=1", ALL_QUESTIONS);
}

bool isSound(const std::string& file)
{
    return run("file:" + file, "PRAGMA integrity_check") == Reading{true, "ok|\n"};
}
