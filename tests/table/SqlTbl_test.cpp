#include "zav/SqlTbl.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <new>
#include <string>
#include <type_traits>
#include <vector>

#include "support/Row.h"
#include "support/SampleTbl.h"
#include "support/records.h"
#include "support/standsBefore.h"

namespace {

/// @return the place of a virtual operation in the virtual table: the first word of a pointer to
///         member holds it, as an offset in bytes (plus 1 on some processors).
template <class Member>
std::ptrdiff_t slotOf(Member member)
{
    std::ptrdiff_t words[2];
    static_assert(sizeof(member) == sizeof(words), "pointer to member of another form");
    std::memcpy(words, &member, sizeof(words));
    return words[0] / static_cast<std::ptrdiff_t>(sizeof(void*));
}

TEST(SqlTbl, ConstructorTakesTheNameAndNothingElse)
{
    const SampleTbl table;
    EXPECT_EQ(table.tableName, "sample");
    EXPECT_TRUE(table.columns.empty());
    EXPECT_EQ(table.record.wide, 0U);
    EXPECT_EQ(table.record.text, "");
    EXPECT_TRUE(table.initNames.empty());
}

TEST(SqlTbl, RecordWithoutInitialValuesStartsAtZero)
{
    struct Plain {
        unsigned number;
        std::string text;
    };
    class PlainTbl : public SqlTbl<Plain> {
    public:
        PlainTbl() : SqlTbl<Plain>("plain") {}
        void init(const std::string& /*name*/) override {}
    };
    std::vector<unsigned char> usedMemory(sizeof(PlainTbl), 0xAB);
    auto* const table = new (usedMemory.data()) PlainTbl;
    EXPECT_EQ(table->record.number, 0U);
    EXPECT_EQ(table->record.text, "");
    table->~PlainTbl();
}

TEST(SqlTbl, IsNeitherCopiedNorMoved)
{
    EXPECT_FALSE(std::is_copy_constructible<SampleTbl>::value);
    EXPECT_FALSE(std::is_copy_assignable<SampleTbl>::value);
    EXPECT_FALSE(std::is_move_constructible<SampleTbl>::value);
    EXPECT_FALSE(std::is_move_assignable<SampleTbl>::value);
}

TEST(SqlTbl, IsAbstractWithAVirtualDestructor)
{
    EXPECT_TRUE(std::is_abstract<SqlTbl<Sample>>::value);
    EXPECT_TRUE(std::has_virtual_destructor<SqlTbl<Sample>>::value);
}

TEST(SqlTbl, MembersStandInTheirOrder)
{
    const SampleTbl table;
    EXPECT_TRUE(standsBefore(&table.columns, &table.record));
    EXPECT_TRUE(standsBefore(&table.record, &table.tableName));
}

// Applications that were compiled against an earlier header call these by their place.
TEST(SqlTbl, VirtualOperationsKeepTheirSlots)
{
    using Table = SqlTbl<Sample>;  // slots 0 and 1: the destructor's two forms
    EXPECT_EQ(slotOf(&Table::getSqlInsertValuesQuery), 2);
    EXPECT_EQ(slotOf(&Table::getSqlUpdateValuesQuery), 3);
    EXPECT_EQ(slotOf(&Table::init), 4);
    EXPECT_EQ(slotOf(&Table::rebuild), 5);
    EXPECT_EQ(slotOf(&Table::convertValueToStr), 6);
    EXPECT_EQ(slotOf(&Table::convertValueFromStr), 7);
}

TEST(SqlTbl, OtherOperationsAreNotVirtual)
{
    class HidingTbl : public SampleTbl {
    public:
        void reorderColumns(const std::vector<std::string>& /*names*/) { columns.clear(); }
        int setDatafromSqlResult(char** /*row*/) { return -1; }
        std::string getSqlInsertValues() const { return "hidden"; }
        std::string getSqlUpdateValues() const { return "hidden"; }
    };
    HidingTbl hiding;
    SqlTbl<Sample>& table = hiding;
    table.columns = {{"narrow", INTEGER, HidingTbl::VALUE_TYPE_UINT16, &table.record.narrow}};

    table.reorderColumns({"narrow"});
    EXPECT_EQ(table.columns.size(), 1U);
    Row row{"5"};
    EXPECT_EQ(table.setDatafromSqlResult(row.data()), 1);
    EXPECT_EQ(table.getSqlInsertValues(), "INSERT INTO sample('narrow') VALUES(5)");
    EXPECT_EQ(table.getSqlUpdateValues(), "UPDATE sample SET 'narrow'=5");
}

TEST(SqlTbl, ValueTypesAreNumberedIn32Bits)
{
    EXPECT_EQ(SampleTbl::VALUE_TYPE_NONE, 0U);
    EXPECT_EQ(SampleTbl::VALUE_TYPE_UINT64, 1U);
    EXPECT_EQ(SampleTbl::VALUE_TYPE_UINT32, 2U);
    EXPECT_EQ(SampleTbl::VALUE_TYPE_UINT16, 3U);
    EXPECT_EQ(SampleTbl::VALUE_TYPE_STRING, 4U);
    EXPECT_TRUE((std::is_same<std::underlying_type<SampleTbl::columnValueType_t>::type,
                              std::uint32_t>::value));
}

TEST(SqlTbl, DefaultColumnIsNotBound)
{
    const SampleTbl::column_t column;
    EXPECT_EQ(column.name, "");
    EXPECT_EQ(column.sqlType, "");
    EXPECT_EQ(column.valueType, SampleTbl::VALUE_TYPE_NONE);
    EXPECT_EQ(column.pValue, nullptr);
}

TEST(SqlTbl, ColumnFieldsStandInTheirOrder)
{
    const SampleTbl::column_t column;
    EXPECT_EQ(static_cast<const void*>(&column.name), &column);
    EXPECT_TRUE(standsBefore(&column.name, &column.sqlType));
    EXPECT_TRUE(standsBefore(&column.sqlType, &column.valueType));
    EXPECT_TRUE(standsBefore(&column.valueType, &column.pValue));
}

TEST(SqlTbl, ColumnTakesItsTextsAsStringsToo)
{
    SampleTbl table;
    const SampleTbl::column_t column(std::string("text"), std::string(VARCHAR),
                                     SampleTbl::VALUE_TYPE_STRING, &table.record.text);
    EXPECT_EQ(column.name, "text");
    EXPECT_EQ(column.sqlType, "VARCHAR");
    EXPECT_EQ(column.valueType, SampleTbl::VALUE_TYPE_STRING);
    EXPECT_EQ(column.pValue, &table.record.text);
}

TEST(SqlTbl, CopyOfAColumnIsBoundToTheSameField)
{
    SampleTbl table;
    const SampleTbl::column_t column("text", VARCHAR, SampleTbl::VALUE_TYPE_STRING,
                                     &table.record.text);
    const SampleTbl::column_t copy(column);
    EXPECT_EQ(copy.name, "text");
    EXPECT_EQ(copy.sqlType, "VARCHAR");
    EXPECT_EQ(copy.valueType, SampleTbl::VALUE_TYPE_STRING);
    EXPECT_EQ(copy.pValue, &table.record.text);
}

TEST(SqlTbl, RebuildEmptiesTheListAndCallsTheDerivedInit)
{
    SampleTbl table;
    table.columns = {{"text", VARCHAR, SampleTbl::VALUE_TYPE_STRING, &table.record.text}};
    table.record.text = "kept";
    table.rebuild("any name");
    EXPECT_EQ(table.initNames, std::vector<std::string>{"any name"});
    EXPECT_EQ(columnsOf(table),
              (std::vector<ColumnFields>{{"wide", "INTEGER", 1, &table.record.wide},
                                         {"number", "INTEGER", 2, &table.record.number},
                                         {"narrow", "INTEGER", 3, &table.record.narrow},
                                         {"text", "VARCHAR", 4, &table.record.text}}));
    EXPECT_EQ(table.tableName, "sample");
    EXPECT_EQ(table.record.text, "kept");
}

TEST(SqlTbl, DefaultTextOfAnyValueIsNa)
{
    SampleTbl table;
    table.record.text = "text";
    for (const std::uint32_t type : {0U, 1U, 2U, 3U, 4U, 5U, 0x7fffffffU, 0xffffffffU}) {
        const auto valueType = static_cast<SampleTbl::columnValueType_t>(type);
        EXPECT_EQ(table.convertValueToStr(valueType, &table.record.text), "n/a") << type;
        EXPECT_EQ(table.convertValueToStr(valueType, nullptr), "n/a") << type;
    }
}

TEST(SqlTbl, DefaultDecodingOfAnOwnKindDoesNothing)
{
    SampleTbl table;
    table.record.text = "kept";
    for (const std::uint32_t type : {0U, 4U, 5U, 0xffffffffU}) {
        const auto valueType = static_cast<SampleTbl::columnValueType_t>(type);
        table.convertValueFromStr(valueType, "new", &table.record.text);
        table.convertValueFromStr(valueType, "new", nullptr);
    }
    EXPECT_EQ(table.record.text, "kept");
}

TEST(SqlTbl, QueriesOfADerivedTableCanBeOverridden)
{
    class OverridingTbl : public SampleTbl {
    public:
        std::string getSqlInsertValuesQuery(const Sample& /*rec*/) override { return "insert"; }
        std::string getSqlUpdateValuesQuery(const Sample& /*rec*/) override { return "update"; }
        void rebuild(const std::string& /*name*/) override { tableName = "rebuilt"; }
    };
    OverridingTbl overriding;
    SqlTbl<Sample>& table = overriding;
    EXPECT_EQ(table.getSqlInsertValuesQuery(Sample()), "insert");
    EXPECT_EQ(table.getSqlUpdateValuesQuery(Sample()), "update");
    table.rebuild("");
    EXPECT_EQ(table.tableName, "rebuilt");
}

}  // namespace
