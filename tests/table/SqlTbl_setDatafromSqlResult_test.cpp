#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "support/CoutCapture.h"
#include "support/FailingLogMutex.h"
#include "support/FailingNew.h"
#include "support/Row.h"
#include "support/SampleTbl.h"
#include "support/reporterLines.h"
#include "zav/SqlTbl.h"

namespace {

const std::string UNKNOWN_TYPE = warningLine("unknown type");

constexpr std::uint32_t NONE = 0;

/// A table whose fields all hold values of an earlier row.
template <class Table>
class DecodedTable : public testing::Test {
protected:
    DecodedTable()
    {
        m_table.init("");
        m_table.record.wide = 11;
        m_table.record.number = 22;
        m_table.record.narrow = 33;
        m_table.record.text = "old text";
        m_table.record.own = "old";
    }

    /// Makes a column of an own kind, or of none, the table's only one.
    void bindOwn(std::uint32_t type)
    {
        m_table.columns = {{"own", "", OwnKindsTbl::kind(type), &m_table.record.own}};
    }

    /// @return what decoding the cells returns.
    int decode(std::initializer_list<const char*> cells)
    {
        Row row(cells);
        return m_table.setDatafromSqlResult(row.data());
    }

    std::string output() const { return m_capture.text(); }

    Table m_table;

private:
    CoutCapture m_capture;
};

using SqlTblSetData = DecodedTable<SampleTbl>;
using SqlTblSetDataOfOwnKinds = DecodedTable<OwnKindsTbl>;

TEST_F(SqlTblSetData, EachKindIsDecodedIntoItsField)
{
    EXPECT_EQ(decode({"18446744073709551615", "4294967295", "65535", "a text"}), 4);
    EXPECT_EQ(m_table.record.wide, 18446744073709551615U);
    EXPECT_EQ(m_table.record.number, 4294967295U);
    EXPECT_EQ(m_table.record.narrow, 65535U);
    EXPECT_EQ(m_table.record.text, "a text");
    EXPECT_EQ(output(), "");
}

TEST_F(SqlTblSetData, NullNumberIsZeroSilentlyAndNullTextIsNa)
{
    EXPECT_EQ(decode({nullptr, nullptr, nullptr, nullptr}), 4);
    EXPECT_EQ(m_table.record.wide, 0U);
    EXPECT_EQ(m_table.record.number, 0U);
    EXPECT_EQ(m_table.record.narrow, 0U);
    EXPECT_EQ(m_table.record.text, "n/a");
    EXPECT_EQ(output(), "");
}

TEST_F(SqlTblSetData, UnreadableNumberIsZeroAndReportedAndTheRowGoesOn)
{
    EXPECT_EQ(decode({"abc", "abc", "abc", "abc"}), 4);
    EXPECT_EQ(m_table.record.wide, 0U);
    EXPECT_EQ(m_table.record.number, 0U);
    EXPECT_EQ(m_table.record.narrow, 0U);
    EXPECT_EQ(m_table.record.text, "abc");
    EXPECT_EQ(output(), errorLine("casting value \"abc\", typeid=y") +
                            errorLine("casting value \"abc\", typeid=j") +
                            errorLine("casting value \"abc\", typeid=t"));
}

TEST_F(SqlTblSetData, NumberThatDoesNotFitIsZeroAndReported)
{
    EXPECT_EQ(decode({"18446744073709551616", "18446744073709551615", "70000", ""}), 4);
    EXPECT_EQ(m_table.record.wide, 0U);
    EXPECT_EQ(m_table.record.number, 0U);
    EXPECT_EQ(m_table.record.narrow, 0U);
    EXPECT_EQ(output(), errorLine("casting value \"18446744073709551616\", typeid=y") +
                            errorLine("casting value \"18446744073709551615\", typeid=j") +
                            errorLine("casting value \"70000\", typeid=t"));
}

TEST_F(SqlTblSetData, TextIsCopiedUnchanged)
{
    for (const char* text : {"", " ", " 42 ", "n/a", "it's", "a,b", "\xC3\xA4\xE4\n\t\"", "NULL"}) {
        decode({"1", "2", "3", text});
        EXPECT_EQ(m_table.record.text, text);
    }
    EXPECT_EQ(output(), "");
}

TEST_F(SqlTblSetData, OnlyTheFieldsOwnBytesAreWritten)
{
    unsigned short narrow[] = {1111, 2222, 3333};
    unsigned int number[] = {1111, 2222, 3333};
    m_table.columns = {{"narrow", INTEGER, SampleTbl::VALUE_TYPE_UINT16, &narrow[1]},
                       {"number", INTEGER, SampleTbl::VALUE_TYPE_UINT32, &number[1]}};
    for (const char* cell : {"7", "abc", static_cast<const char*>(nullptr)}) {
        EXPECT_EQ(decode({cell, cell}), 2);
        EXPECT_EQ(narrow[0], 1111U);
        EXPECT_EQ(narrow[2], 3333U);
        EXPECT_EQ(number[0], 1111U);
        EXPECT_EQ(number[2], 3333U);
    }
}

TEST_F(SqlTblSetData, ColumnWithoutBindingIsSkippedAndNotCounted)
{
    m_table.columns.insert(m_table.columns.begin() + 1,
                           {"unbound", INTEGER, SampleTbl::VALUE_TYPE_UINT32, nullptr});
    m_table.columns.insert(m_table.columns.begin() + 3, SampleTbl::column_t());
    EXPECT_EQ(decode({"1", "abc", "2", nullptr, "3", "text"}), 4);
    EXPECT_EQ(m_table.record.wide, 1U);
    EXPECT_EQ(m_table.record.number, 2U);
    EXPECT_EQ(m_table.record.narrow, 3U);
    EXPECT_EQ(m_table.record.text, "text");
    EXPECT_EQ(output(), "");
}

TEST_F(SqlTblSetData, FiveBoundColumnsAndOneWithoutBindingCountFive)
{
    m_table.columns.assign(
        6, {"narrow", INTEGER, SampleTbl::VALUE_TYPE_UINT16, &m_table.record.narrow});
    m_table.columns[2].pValue = nullptr;
    EXPECT_EQ(decode({"1", "2", "3", "4", "5", "6"}), 5);
    EXPECT_EQ(m_table.record.narrow, 6U);
}

TEST_F(SqlTblSetData, TableWithoutColumnsReadsNothing)
{
    m_table.columns.clear();
    EXPECT_EQ(m_table.setDatafromSqlResult(nullptr), 0);
    EXPECT_EQ(m_table.record.text, "old text");
}

TEST_F(SqlTblSetData, CountWrapsAt65536)
{
    for (const auto& [columnCount, expected] :
         {std::pair<std::size_t, int>{65535, 65535}, {65536, 0}, {65538, 2}}) {
        m_table.columns.assign(
            columnCount, {"narrow", INTEGER, SampleTbl::VALUE_TYPE_UINT16, &m_table.record.narrow});
        char cell[] = "5";
        std::vector<char*> row(columnCount, cell);
        EXPECT_EQ(m_table.setDatafromSqlResult(row.data()), expected);
    }
}

TEST_F(SqlTblSetData, NullRowReadsAsANullCell)
{
    for (const auto type : {SampleTbl::VALUE_TYPE_UINT64, SampleTbl::VALUE_TYPE_UINT32,
                            SampleTbl::VALUE_TYPE_UINT16}) {
        unsigned long long field = 0x1111111111111111;
        m_table.columns = {{"field", INTEGER, type, &field}};
        EXPECT_EQ(m_table.setDatafromSqlResult(nullptr), 1);
        unsigned short part = 1;
        static_assert(sizeof(part) == 2, "the narrowest field");
        std::memcpy(&part, &field, sizeof(part));
        EXPECT_EQ(part, 0U) << type;
    }
    m_table.columns = {{"text", VARCHAR, SampleTbl::VALUE_TYPE_STRING, &m_table.record.text}};
    EXPECT_EQ(m_table.setDatafromSqlResult(nullptr), 1);
    EXPECT_EQ(m_table.record.text, "n/a");
    EXPECT_EQ(output(), "");

    bindOwn(5);
    EXPECT_EQ(m_table.setDatafromSqlResult(nullptr), 1);
    EXPECT_EQ(m_table.record.own, "old");
    EXPECT_EQ(output(), UNKNOWN_TYPE);
}

TEST_F(SqlTblSetData, OwnKindWithoutHookIsCountedAndIgnored)
{
    bindOwn(5);
    EXPECT_EQ(decode({"new"}), 1);
    EXPECT_EQ(m_table.record.own, "old");
    EXPECT_EQ(output(), "");
}

TEST_F(SqlTblSetDataOfOwnKinds, HookGetsTheTypeTheTextAndTheField)
{
    for (const std::uint32_t type : OWN_KINDS) {
        bindOwn(type);
        EXPECT_EQ(decode({"12,5"}), 1);
        EXPECT_EQ(m_table.record.own, std::to_string(type) + "/12,5");
    }
    EXPECT_EQ(output(), "");
}

TEST_F(SqlTblSetDataOfOwnKinds, BoundColumnOfNoKindGoesThroughTheHook)
{
    bindOwn(NONE);
    EXPECT_EQ(decode({"new"}), 1);
    EXPECT_EQ(m_table.record.own, "0/new");
    EXPECT_EQ(decode({nullptr}), 1);
    EXPECT_EQ(m_table.record.own, "0/new");
    EXPECT_EQ(output(), UNKNOWN_TYPE);
}

TEST_F(SqlTblSetDataOfOwnKinds, EmptyTextIsNoNull)
{
    bindOwn(5);
    EXPECT_EQ(decode({""}), 1);
    EXPECT_EQ(m_table.record.own, "5/");
    EXPECT_EQ(output(), "");
}

TEST_F(SqlTblSetDataOfOwnKinds, NullCellLeavesTheFieldAndIsWarnedAbout)
{
    std::string expected;
    for (const std::uint32_t type : OWN_KINDS) {
        bindOwn(type);
        EXPECT_EQ(decode({nullptr}), 1);
        EXPECT_EQ(m_table.record.own, "old");
        expected += UNKNOWN_TYPE;
        EXPECT_EQ(output(), expected);
    }
}

TEST_F(SqlTblSetDataOfOwnKinds, BuiltInKindsDoNotReachTheHook)
{
    EXPECT_EQ(decode({"1", "abc", nullptr, "text"}), 4);
    EXPECT_EQ(m_table.record.wide, 1U);
    EXPECT_EQ(m_table.record.number, 0U);
    EXPECT_EQ(m_table.record.narrow, 0U);
    EXPECT_EQ(m_table.record.text, "text");
    EXPECT_EQ(m_table.record.own, "old");
}

TEST_F(SqlTblSetDataOfOwnKinds, ExceptionOfTheHookPassesThrough)
{
    struct HookFailure {};
    class ThrowingTbl : public OwnKindsTbl {
    public:
        void convertValueFromStr(columnValueType_t /*type*/, const std::string& /*text*/,
                                 void* /*value*/) const override
        {
            throw HookFailure();
        }
    };
    ThrowingTbl table;
    table.columns = {{"own", "", OwnKindsTbl::kind(5), &table.record.own}};
    Row row{"new"};
    EXPECT_THROW(table.setDatafromSqlResult(row.data()), HookFailure);
}

TEST_F(SqlTblSetData, ExceptionOfAReporterPassesThrough)
{
    const FailingLogMutex failing;
    EXPECT_THROW(decode({"1", "abc", "3", "text"}), std::system_error);
}

TEST_F(SqlTblSetData, FailedAllocationPassesThrough)
{
    const std::string longText = "a text too long for the short string buffer";
    Row row{"1", "2", "3", longText.c_str()};
    const int failures = failEachAllocation(
        [&] {
            m_table.record.text = std::string();
            m_table.setDatafromSqlResult(row.data());
        },
        [&] { EXPECT_EQ(m_table.record.text, ""); });
    EXPECT_GT(failures, 0);
    EXPECT_EQ(m_table.record.text, longText);
}

}  // namespace
