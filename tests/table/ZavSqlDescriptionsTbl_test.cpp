#include "zav/ZavSqlDescriptionsTbl.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/CoutCapture.h"
#include "support/Row.h"
#include "support/TempDir.h"
#include "support/database.h"
#include "support/records.h"
#include "support/reporterLines.h"
#include "table/concreteTableTests.h"
#include "zav/Sqlite3Db.h"

namespace {

struct DescriptionsTraits {
    using Table = ZavSqlDescriptionsTbl;
    using Record = Descriptions;
    static constexpr const char* NAME = "descriptions";
    static constexpr const char* SOME_COLUMN = "name";

    static std::vector<ColumnFields> fullList(const ZavSqlDescriptionsTbl& table)
    {
        return {{"id", "INTEGER PRIMARY KEY AUTOINCREMENT NOT NULL", 3, &table.record.id},
                {"id_fault_type", "INTEGER", 3, &table.record.id_fault_type},
                {"id_language", "INTEGER", 3, &table.record.id_language},
                {"name", "VARCHAR", 4, &table.record.name},
                {"short_description", "VARCHAR", 4, &table.record.short_description},
                {"description", "VARCHAR", 4, &table.record.description},
                {"comment", "VARCHAR", 4, &table.record.comment},
                {"remedy", "VARCHAR", 4, &table.record.remedy}};
    }
};

INSTANTIATE_TYPED_TEST_SUITE_P(ZavSqlDescriptionsTbl, ConcreteTable, DescriptionsTraits, );

TEST(ZavSqlDescriptionsTbl, AssigningTheRecordKeepsTheBindings)
{
    ZavSqlDescriptionsTbl table("descriptions");
    table.record =
        makeDescriptions(1, 2, 3, "a text too long for the short string buffer", "", "", "", "");
    EXPECT_EQ(columnsOf(table), DescriptionsTraits::fullList(table));
    Row row{"7", "12", "2", "name", "short", "descr", "comm", "rem"};
    EXPECT_EQ(table.setDatafromSqlResult(row.data()), 8);
    EXPECT_EQ(fieldsOf(table.record),
              fieldsOf(makeDescriptions(7, 12, 2, "name", "short", "descr", "comm", "rem")));
}

TEST(ZavSqlDescriptionsTbl, ReadsRowsOfADatabase)
{
    const TempDir folder;
    const std::string file = makeDatabase(
        folder.file("faults.db"),
        "INSERT INTO descriptions VALUES(65535,65535,1,'Überhitzung','',NULL,'été','it''s');"
        "INSERT INTO descriptions VALUES(65536,70000,NULL,NULL,NULL,NULL,NULL,NULL);");
    Sqlite3Db db(0);
    ASSERT_EQ(db.openDb(file, true), 0);
    ZavSqlDescriptionsTbl table("descriptions");
    std::vector<Descriptions> records;
    const CoutCapture capture;
    ASSERT_EQ(db.getTbl("SELECT * FROM descriptions ORDER BY id", records, &table), 2);
    EXPECT_EQ(fieldsOf(records[0]),
              fieldsOf(makeDescriptions(65535, 65535, 1, "Überhitzung", "", "n/a", "été", "it's")));
    EXPECT_EQ(fieldsOf(records[1]),
              fieldsOf(makeDescriptions(0, 0, 0, "n/a", "n/a", "n/a", "n/a", "n/a")));
    EXPECT_EQ(capture.text(), errorLine("casting value \"65536\", typeid=t") +
                                  errorLine("casting value \"70000\", typeid=t"));
}

}  // namespace
