#pragma once

#include <string>
#include <vector>

#include "zav/SqlTbl.h"

/// The three texts of a column's SQL type that the statement texts know.
constexpr const char* KEY = "INTEGER PRIMARY KEY AUTOINCREMENT NOT NULL";
constexpr const char* VARCHAR = "VARCHAR";
constexpr const char* INTEGER = "INTEGER";

/// A record with one field of each kind.
struct Sample {
    unsigned long long wide = 0;
    unsigned int number = 0;
    unsigned short narrow = 0;
    std::string text;
    std::string own;  ///< of a derived table's own kind
};

/// A table as an application may define it. Most tests give it their own `columns`.
class SampleTbl : public SqlTbl<Sample> {
public:
    SampleTbl() : SqlTbl<Sample>("sample") {}

    void init(const std::string& name) override
    {
        initNames.push_back(name);
        if (columns.empty()) {
            columns = {{"wide", INTEGER, VALUE_TYPE_UINT64, &record.wide},
                       {"number", INTEGER, VALUE_TYPE_UINT32, &record.number},
                       {"narrow", INTEGER, VALUE_TYPE_UINT16, &record.narrow},
                       {"text", VARCHAR, VALUE_TYPE_STRING, &record.text}};
        }
    }

    std::vector<std::string> initNames;  ///< the arguments with which init() was called
};

/// A SampleTbl with value types of its own. Both hooks write all that they are given: the type, and
/// the text of the field or of the cell.
class OwnKindsTbl : public SampleTbl {
public:
    /// @return the value type of a number, built-in or own.
    static columnValueType_t kind(std::uint32_t number)
    {
        return static_cast<columnValueType_t>(number);
    }

    std::string convertValueToStr(columnValueType_t type, void* value) const override
    {
        return std::to_string(type) + "/" + *static_cast<const std::string*>(value);
    }

    void convertValueFromStr(columnValueType_t type, const std::string& text,
                             void* value) const override
    {
        *static_cast<std::string*>(value) = std::to_string(type) + "/" + text;
    }
};

/// Value types that a derived table may take for itself: the first, one at the largest signed
/// value, the last.
constexpr std::uint32_t OWN_KINDS[] = {5, 0x7fffffff, 0xffffffff};
