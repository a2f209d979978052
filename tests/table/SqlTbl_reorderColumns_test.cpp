#include <gtest/gtest.h>

#include <initializer_list>
#include <string>
#include <vector>

#include "support/CoutCapture.h"
#include "support/FailingNew.h"
#include "support/Row.h"
#include "support/SampleTbl.h"
#include "support/records.h"
#include "zav/SqlTbl.h"
#include "zav/ZavSqlDescriptionsTbl.h"
#include "zav/ZavSqlFaultTypeDefTbl.h"

namespace {

using Names = std::vector<std::string>;
using Columns = std::vector<ColumnFields>;

class SqlTblReorderColumns : public testing::Test {
protected:
    SqlTblReorderColumns() { m_table.init(""); }

    ColumnFields wide() { return {"wide", "INTEGER", 1, &m_table.record.wide}; }
    ColumnFields number() { return {"number", "INTEGER", 2, &m_table.record.number}; }
    ColumnFields narrow() { return {"narrow", "INTEGER", 3, &m_table.record.narrow}; }
    ColumnFields text() { return {"text", "VARCHAR", 4, &m_table.record.text}; }
    static ColumnFields placeholder(const std::string& name) { return {name, "", 0, nullptr}; }

    void decode(std::initializer_list<const char*> cells)
    {
        Row row(cells);
        m_table.setDatafromSqlResult(row.data());
    }

    SampleTbl m_table;
};

TEST_F(SqlTblReorderColumns, NamesInTheOrderOfTheListChangeNothing)
{
    m_table.reorderColumns({"wide", "number", "narrow", "text"});
    EXPECT_EQ(columnsOf(m_table), (Columns{wide(), number(), narrow(), text()}));
}

TEST_F(SqlTblReorderColumns, NamesInAnotherOrderReorderTheList)
{
    m_table.reorderColumns({"text", "wide", "narrow", "number"});
    EXPECT_EQ(columnsOf(m_table), (Columns{text(), wide(), narrow(), number()}));
}

TEST_F(SqlTblReorderColumns, DecodingFollowsTheNewOrder)
{
    m_table.reorderColumns({"text", "wide", "narrow", "number"});
    decode({"a text", "1", "2", "3"});
    EXPECT_EQ(m_table.record.text, "a text");
    EXPECT_EQ(m_table.record.wide, 1U);
    EXPECT_EQ(m_table.record.narrow, 2U);
    EXPECT_EQ(m_table.record.number, 3U);
}

TEST_F(SqlTblReorderColumns, UnknownNameBecomesAPlaceholder)
{
    m_table.reorderColumns({"wide", "severity", "text"});
    EXPECT_EQ(columnsOf(m_table), (Columns{wide(), placeholder("severity"), text()}));
}

TEST_F(SqlTblReorderColumns, CellOfAPlaceholderIsIgnored)
{
    m_table.reorderColumns({"severity", "text"});
    const CoutCapture capture;
    decode({"high", "a text"});
    EXPECT_EQ(m_table.record.text, "a text");
    EXPECT_EQ(capture.text(), "");
}

TEST_F(SqlTblReorderColumns, NamesAreComparedExactly)
{
    const Names different = {"Text",  "TEXT",     "text ",       " text", "tex",
                             "texts", "\"text\"", "sample.text", "",      std::string("text\0", 5)};
    for (const std::string& name : different) {
        m_table.rebuild("");
        m_table.reorderColumns({name, "wide"});
        EXPECT_EQ(columnsOf(m_table), (Columns{placeholder(name), wide()})) << name;
    }
}

TEST_F(SqlTblReorderColumns, FieldOfANameInOtherLetterCaseIsNotFilled)
{
    m_table.record.text = "kept";
    m_table.reorderColumns({"Text", "narrow"});
    decode({"a text", "1"});
    EXPECT_EQ(m_table.record.text, "kept");
    EXPECT_EQ(m_table.record.narrow, 1U);
}

TEST_F(SqlTblReorderColumns, ColumnThatTheResultLacksIsDropped)
{
    m_table.reorderColumns({"text", "number"});
    EXPECT_EQ(columnsOf(m_table), (Columns{text(), number()}));
}

TEST_F(SqlTblReorderColumns, FieldOfADroppedColumnKeepsItsValue)
{
    decode({"1", "2", "3", "old"});
    m_table.reorderColumns({"wide"});
    decode({"10"});
    EXPECT_EQ(m_table.record.wide, 10U);
    EXPECT_EQ(m_table.record.number, 2U);
    EXPECT_EQ(m_table.record.narrow, 3U);
    EXPECT_EQ(m_table.record.text, "old");
}

TEST_F(SqlTblReorderColumns, DroppedColumnDoesNotComeBackByItsName)
{
    m_table.reorderColumns({"wide"});
    m_table.reorderColumns({"wide", "text"});
    EXPECT_EQ(columnsOf(m_table), (Columns{wide(), placeholder("text")}));
}

TEST_F(SqlTblReorderColumns, InitDoesNotBringADroppedColumnBack)
{
    m_table.reorderColumns({"wide"});
    m_table.init("sample");
    EXPECT_EQ(columnsOf(m_table), (Columns{wide()}));
}

TEST_F(SqlTblReorderColumns, RebuildRestoresTheFullList)
{
    m_table.reorderColumns({"severity", "text"});
    m_table.rebuild("sample");
    EXPECT_EQ(columnsOf(m_table), (Columns{wide(), number(), narrow(), text()}));
}

TEST_F(SqlTblReorderColumns, PlaceholderIsFoundByItsNameAndStaysUnbound)
{
    m_table.reorderColumns({"severity", "text"});
    m_table.reorderColumns({"text", "severity"});
    EXPECT_EQ(columnsOf(m_table), (Columns{text(), placeholder("severity")}));
}

TEST_F(SqlTblReorderColumns, ColumnWithoutBindingIsFoundByItsNameAndKeepsItsTypes)
{
    m_table.columns = {{"unbound", VARCHAR, SampleTbl::VALUE_TYPE_STRING, nullptr}};
    m_table.reorderColumns({"unbound"});
    EXPECT_EQ(columnsOf(m_table), (Columns{{"unbound", "VARCHAR", 4, nullptr}}));
}

TEST_F(SqlTblReorderColumns, NameThatOccursTwiceIsBoundTwice)
{
    m_table.reorderColumns({"text", "wide", "text"});
    EXPECT_EQ(columnsOf(m_table), (Columns{text(), wide(), text()}));
}

TEST_F(SqlTblReorderColumns, LaterCellOfANameThatOccursTwiceWins)
{
    m_table.reorderColumns({"text", "wide", "text"});
    decode({"first", "1", "second"});
    EXPECT_EQ(m_table.record.text, "second");
}

TEST_F(SqlTblReorderColumns, FirstOfTwoColumnsOfOneNameIsTaken)
{
    m_table.columns = {{"x", INTEGER, SampleTbl::VALUE_TYPE_UINT32, &m_table.record.number},
                       {"x", VARCHAR, SampleTbl::VALUE_TYPE_STRING, &m_table.record.text}};
    m_table.reorderColumns({"x"});
    EXPECT_EQ(columnsOf(m_table), (Columns{{"x", "INTEGER", 2, &m_table.record.number}}));
}

TEST_F(SqlTblReorderColumns, ResultWithMoreColumnsThanTheListIsMatchedWhole)
{
    m_table.reorderColumns({"a", "wide", "b", "number", "c", "narrow", "d", "text", "e"});
    EXPECT_EQ(columnsOf(m_table),
              (Columns{placeholder("a"), wide(), placeholder("b"), number(), placeholder("c"),
                       narrow(), placeholder("d"), text(), placeholder("e")}));
}

TEST_F(SqlTblReorderColumns, NoNamesChangeNothing)
{
    m_table.reorderColumns({"text", "severity"});
    m_table.reorderColumns({});
    EXPECT_EQ(columnsOf(m_table), (Columns{text(), placeholder("severity")}));
}

TEST_F(SqlTblReorderColumns, EmptyListStaysEmpty)
{
    m_table.columns.clear();
    m_table.reorderColumns({"wide", "text"});
    EXPECT_TRUE(m_table.columns.empty());
}

TEST_F(SqlTblReorderColumns, RecordAndTableNameAreUntouchedAndNothingIsWritten)
{
    decode({"1", "2", "3", "text"});
    const CoutCapture capture;
    m_table.reorderColumns({"severity", "text", "text"});
    EXPECT_EQ(m_table.record.wide, 1U);
    EXPECT_EQ(m_table.record.number, 2U);
    EXPECT_EQ(m_table.record.narrow, 3U);
    EXPECT_EQ(m_table.record.text, "text");
    EXPECT_EQ(m_table.tableName, "sample");
    EXPECT_EQ(capture.text(), "");
}

TEST_F(SqlTblReorderColumns, RoomIsReservedForAsManyColumnsAsBefore)
{
    m_table.reorderColumns({"text"});
    EXPECT_EQ(m_table.columns.capacity(), 4U);
}

TEST_F(SqlTblReorderColumns, FailedAllocationLeavesTheListAsItWas)
{
    const std::string longName = "a name too long for the short string buffer";
    m_table.columns.emplace_back(longName, KEY, SampleTbl::VALUE_TYPE_UINT16,
                                 &m_table.record.narrow);
    const Columns before = columnsOf(m_table);
    const Names names = {longName, "text", longName + "s", "a", "b", "c", "wide"};

    const int failures = failEachAllocation([&] { m_table.reorderColumns(names); },
                                            [&] { EXPECT_EQ(columnsOf(m_table), before); });
    EXPECT_GE(failures, 4);  // the list and its growth, two long names
    EXPECT_EQ(columnsOf(m_table), (Columns{{longName, KEY, 3, &m_table.record.narrow},
                                           text(),
                                           placeholder(longName + "s"),
                                           placeholder("a"),
                                           placeholder("b"),
                                           placeholder("c"),
                                           wide()}));
}

TEST(SqlTblReorderColumnsOfTheLibrary, FaultTypeDefinitionsAreReordered)
{
    ZavSqlFaultTypeDefTbl table("fault_type_definition");
    table.reorderColumns({"alias", "Code", "bug", "code"});
    EXPECT_EQ(columnsOf(table), (Columns{{"alias", "VARCHAR", 4, &table.record.alias},
                                         {"Code", "", 0, nullptr},
                                         {"bug", "INTEGER", 2, &table.record.bug},
                                         {"code", KEY, 2, &table.record.code}}));
}

TEST(SqlTblReorderColumnsOfTheLibrary, DescriptionsAreReordered)
{
    ZavSqlDescriptionsTbl table("descriptions");
    table.reorderColumns({"remedy", "id", "Name"});
    EXPECT_EQ(columnsOf(table), (Columns{{"remedy", "VARCHAR", 4, &table.record.remedy},
                                         {"id", KEY, 3, &table.record.id},
                                         {"Name", "", 0, nullptr}}));
}

}  // namespace
