#include "statementText.h"

#include <sqlite3.h>

#include <memory>

#include "zav/ZavSqlDescriptionsTbl.h"

namespace {

const Descriptions& record()
{
    static const Descriptions filled = [] {
        Descriptions description;
        description.id_fault_type = 12;
        description.id_language = 2;
        description.name = "Drive too hot";
        description.short_description = "Overtemperature";
        description.description = "The heat sink of the drive is above 85 degrees.";
        description.remedy = "Clean the filter mat. Check the cabinet fan.";
        return description;
    }();
    return filled;
}

}  // namespace

std::string writeByTable()
{
    static ZavSqlDescriptionsTbl table("descriptions");
    return table.getSqlInsertValuesQuery(record());
}

std::string writeByPrintf()
{
    const Descriptions& filled = record();
    const std::unique_ptr<char, decltype(&sqlite3_free)> text(
        sqlite3_mprintf("INSERT INTO descriptions('id','id_fault_type','id_language',"
                        "'name','short_description','description','comment','remedy') "
                        "VALUES(null,%d,%d,'%s','%s','%s','%s','%s')",
                        filled.id_fault_type, filled.id_language, filled.name.c_str(),
                        filled.short_description.c_str(), filled.description.c_str(),
                        filled.comment.c_str(), filled.remedy.c_str()),
        sqlite3_free);
    return text.get();
}
