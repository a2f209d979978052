#pragma once

#include <sqlite3.h>

#include <cstdint>
#include <string>
#include <vector>

#include "Cost.h"

/// The records as a program of one's own would have them: with the fields of the library's.
struct OwnFaultType {
    std::uint32_t code = 0;
    std::string alias;
    std::string type;
    std::uint32_t bug = 0;
    std::uint16_t clear_after_cycle_nr = 0;
};

struct OwnTexts {
    std::uint16_t id = 0;
    std::uint16_t id_fault_type = 0;
    std::uint16_t id_language = 0;
    std::string name;
    std::string short_description;
    std::string description;
    std::string comment;
    std::string remedy;
};

/// A reader as one would write it over SQLite, with the library's statements; how their rows
/// are had is for the two kinds of it to say.
class SqlReader : public CostReader {
public:
    ~SqlReader() override { sqlite3_close(m_db); }

    bool open(const char* file) override
    {
        return sqlite3_open_v2(file, &m_db, SQLITE_OPEN_READONLY, nullptr) == SQLITE_OK;
    }

    std::size_t ask(Stage question) override
    {
        std::vector<OwnFaultType> faultType;
        switch (question) {
        case Stage::TEXTS_OF_CODE:
            return read("SELECT * FROM \"descriptions\" WHERE id_fault_type=101", m_textsOfCode);
        case Stage::FAULT_TYPE:
            return read("SELECT * FROM \"fault_type_definition\" WHERE code LIKE 101", faultType);
        case Stage::ALL_FAULT_TYPES:
            return read("SELECT * FROM \"fault_type_definition\"", m_faultTypes);
        default:
            return read("SELECT * FROM \"descriptions\"", m_texts);
        }
    }

protected:
    /// @return how many records have been made.
    virtual std::size_t read(const char* sql, std::vector<OwnFaultType>& records) = 0;
    virtual std::size_t read(const char* sql, std::vector<OwnTexts>& records) = 0;

    sqlite3* m_db = nullptr;

private:
    std::vector<OwnTexts> m_textsOfCode;
    std::vector<OwnTexts> m_texts;
    std::vector<OwnFaultType> m_faultTypes;
};

/// Fills a record from a row, whose cells the functions `number(column)` and `text(column)` give.
template <class Row>
void fill(OwnFaultType& record, const Row& row)
{
    record.code = static_cast<decltype(record.code)>(row.number(0));
    record.alias = row.text(1);
    record.type = row.text(2);
    record.bug = static_cast<decltype(record.bug)>(row.number(3));
    record.clear_after_cycle_nr = static_cast<decltype(record.clear_after_cycle_nr)>(row.number(4));
}

template <class Row>
void fill(OwnTexts& record, const Row& row)
{
    record.id = static_cast<decltype(record.id)>(row.number(0));
    record.id_fault_type = static_cast<decltype(record.id_fault_type)>(row.number(1));
    record.id_language = static_cast<decltype(record.id_language)>(row.number(2));
    record.name = row.text(3);
    record.short_description = row.text(4);
    record.description = row.text(5);
    record.comment = row.text(6);
    record.remedy = row.text(7);
}
