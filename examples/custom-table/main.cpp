// Reads a table of its own through the library: custom-table FILE

#include <zav/SqlTbl.h>
#include <zav/Sqlite3Db.h>

#include <iostream>
#include <string>
#include <vector>

enum class Outcome { UNKNOWN, DONE, PARTS_MISSING, POSTPONED };

std::string toString(Outcome outcome)
{
    switch (outcome) {
    case Outcome::DONE:
        return "done";
    case Outcome::PARTS_MISSING:
        return "parts missing";
    case Outcome::POSTPONED:
        return "postponed";
    case Outcome::UNKNOWN:
    default:
        return "unknown";
    }
}

Outcome toOutcome(const std::string& text)
{
    for (const Outcome outcome : {Outcome::DONE, Outcome::PARTS_MISSING, Outcome::POSTPONED}) {
        if (text == toString(outcome)) {
            return outcome;
        }
    }
    return Outcome::UNKNOWN;
}

/// One row of the table "service_log".
struct ServiceLog {
    unsigned int id = 0;
    std::string technician;
    unsigned long long cycles = 0;
    Outcome outcome = Outcome::UNKNOWN;
};

class ServiceLogTbl : public SqlTbl<ServiceLog> {
public:
    ServiceLogTbl() : SqlTbl<ServiceLog>("service_log") { ServiceLogTbl::init(""); }

    void init(const std::string& /*name*/) override
    {
        if (!columns.empty()) {
            return;
        }
        columns = {
            {"id", "INTEGER PRIMARY KEY AUTOINCREMENT NOT NULL", VALUE_TYPE_UINT32, &record.id},
            {"technician", "VARCHAR", VALUE_TYPE_STRING, &record.technician},
            {"cycles", "INTEGER", VALUE_TYPE_UINT64, &record.cycles},
            {"outcome", "VARCHAR", valueTypeOutcome(), &record.outcome},
        };
    }

    std::string convertValueToStr(columnValueType_t type, void* value) const override
    {
        return type == valueTypeOutcome() ? toString(*static_cast<const Outcome*>(value))
                                          : SqlTbl<ServiceLog>::convertValueToStr(type, value);
    }

    void convertValueFromStr(columnValueType_t type, const std::string& text,
                             void* value) const override
    {
        if (type == valueTypeOutcome()) {
            *static_cast<Outcome*>(value) = toOutcome(text);
        } else {
            SqlTbl<ServiceLog>::convertValueFromStr(type, text, value);
        }
    }

private:
    // The library leaves the values from 5 up to derived tables.
    static columnValueType_t valueTypeOutcome() { return static_cast<columnValueType_t>(5); }
};

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::cerr << "usage: custom-table FILE\n";
        return 2;
    }
    Sqlite3Db db(0);
    if (db.openDb(argv[1], true) != 0) {
        std::cerr << argv[1] << ": " << db.lastErrorText() << "\n";
        return 1;
    }
    ServiceLogTbl table;
    std::vector<ServiceLog> services;
    if (db.getTbl("SELECT * FROM service_log ORDER BY cycles", services, &table) < 0) {
        return 1;
    }
    for (const ServiceLog& service : services) {
        std::cout << service.cycles << " cycles: " << service.technician << ", "
                  << toString(service.outcome) << "\n";
    }
    ServiceLog next;
    next.technician = "Moreau";
    next.cycles = 4933370000;
    next.outcome = Outcome::DONE;
    std::cout << table.getSqlInsertValuesQuery(next) << "\n";
    return db.closeDb();
}
