#pragma once

#include <cstdint>
#include <string>
#include <tuple>
#include <vector>

#include "zav/Descriptions.h"
#include "zav/FaultTypeDef.h"
#include "zav/SqlTbl.h"

/// @return all fields of a record in declared order, to compare and to print.
inline auto fieldsOf(const FaultTypeDef& record)
{
    return std::make_tuple(record.code, record.alias, record.type, record.bug,
                           record.clear_after_cycle_nr);
}

inline auto fieldsOf(const Descriptions& record)
{
    return std::make_tuple(record.id, record.id_fault_type, record.id_language, record.name,
                           record.short_description, record.description, record.comment,
                           record.remedy);
}

using ColumnFields = std::tuple<std::string, std::string, std::uint32_t, const void*>;

/// @return all fields of each column of a table, to compare and to print.
template <class T>
std::vector<ColumnFields> columnsOf(const SqlTbl<T>& table)
{
    std::vector<ColumnFields> fields;
    for (const auto& column : table.columns) {
        fields.emplace_back(column.name, column.sqlType, column.valueType, column.pValue);
    }
    return fields;
}

inline FaultTypeDef makeFaultTypeDef(std::uint32_t code, const std::string& alias,
                                     const std::string& type, std::uint32_t bug,
                                     std::uint16_t clearAfterCycleNr)
{
    FaultTypeDef record;
    record.code = code;
    record.alias = alias;
    record.type = type;
    record.bug = bug;
    record.clear_after_cycle_nr = clearAfterCycleNr;
    return record;
}

inline Descriptions makeDescriptions(std::uint16_t id, std::uint16_t idFaultType,
                                     std::uint16_t idLanguage, const std::string& name,
                                     const std::string& shortDescription,
                                     const std::string& description, const std::string& comment,
                                     const std::string& remedy)
{
    Descriptions record;
    record.id = id;
    record.id_fault_type = idFaultType;
    record.id_language = idLanguage;
    record.name = name;
    record.short_description = shortDescription;
    record.description = description;
    record.comment = comment;
    record.remedy = remedy;
    return record;
}
