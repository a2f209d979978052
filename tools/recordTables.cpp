#include "recordTables.h"

namespace {

using Kind = Table::Kind;

Table::Row rowOf(const FaultTypeDef& record)
{
    return {record.code, record.alias, record.type, record.bug, record.clear_after_cycle_nr};
}

Table::Row rowOf(const Descriptions& record)
{
    return {record.id,
            record.id_fault_type,
            record.id_language,
            record.name,
            record.short_description,
            record.description,
            record.comment,
            record.remedy};
}

template <class Record>
std::vector<Table::Row> rowsOf(const std::vector<Record>& records)
{
    std::vector<Table::Row> rows;
    rows.reserve(records.size());
    for (const Record& record : records) {
        rows.push_back(rowOf(record));
    }
    return rows;
}

}  // namespace

Table tableOf(const std::vector<FaultTypeDef>& records)
{
    return {{{"code", Kind::NUMBER},
             {"alias", Kind::TEXT},
             {"type", Kind::TEXT},
             {"bug", Kind::NUMBER},
             {"clear_after_cycle_nr", Kind::NUMBER}},
            rowsOf(records)};
}

Table tableOf(const std::vector<Descriptions>& records)
{
    return {{{"id", Kind::NUMBER},
             {"id_fault_type", Kind::NUMBER},
             {"id_language", Kind::NUMBER},
             {"name", Kind::TEXT},
             {"short_description", Kind::TEXT},
             {"description", Kind::TEXT},
             {"comment", Kind::TEXT},
             {"remedy", Kind::TEXT}},
            rowsOf(records)};
}
