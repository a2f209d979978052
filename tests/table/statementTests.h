#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <stdexcept>
#include <string>
#include <system_error>
#include <typeinfo>

#include "support/CoutCapture.h"
#include "support/FailingCout.h"
#include "support/FailingLogMutex.h"
#include "support/FailingNew.h"
#include "support/SampleTbl.h"
#include "support/reporterLines.h"

/// Expects the error of a statement that has nothing to list.
template <class Action>
void expectNothingToErase(Action action)
{
    try {
        action();
        ADD_FAILURE() << "no exception";
    } catch (const std::out_of_range& exception) {
        EXPECT_STREQ(exception.what(), "basic_string::erase");
        EXPECT_EQ(typeid(exception), typeid(std::out_of_range));
    }
}

/// A table whose hook fails.
class ThrowingTbl : public OwnKindsTbl {
public:
    struct HookFailure {};

    std::string convertValueToStr(columnValueType_t /*type*/, void* /*value*/) const override
    {
        throw HookFailure();
    }
};

/// How both statements fail: whatever comes in between passes through, and the working record holds
/// the new values all the same.
///
/// @tparam Statement  `of(table)` and `query(table, record)`, the two ways to the text.
template <class Statement>
class FailingStatement : public testing::Test {
protected:
    FailingStatement()
    {
        m_new.narrow = 7;
        m_new.text = "new text";
    }

    template <class Table>
    void query(Table& table)
    {
        Statement::query(table, m_new);
    }

    /// Expects the working record to hold the new values; forgets them.
    void expectNewValues(SqlTbl<Sample>& table)
    {
        EXPECT_EQ(table.record.narrow, 7U);
        EXPECT_EQ(table.record.text, "new text");
        table.record = Sample();
    }

    void bindText(SampleTbl& table, const char* name, std::uint32_t type, void* field)
    {
        table.columns = {{"first", VARCHAR, SampleTbl::VALUE_TYPE_STRING, &table.record.text},
                         {name, VARCHAR, OwnKindsTbl::kind(type), field}};
    }

    Sample m_new;
};

TYPED_TEST_SUITE_P(FailingStatement);

TYPED_TEST_P(FailingStatement, TableWithoutColumnsIsOutOfRange)
{
    SampleTbl table;
    expectNothingToErase([&] { TypeParam::of(table); });
    expectNothingToErase([&] { this->query(table); });
    this->expectNewValues(table);
}

TYPED_TEST_P(FailingStatement, ExceptionOfTheHookPassesThrough)
{
    ThrowingTbl table;
    this->bindText(table, "own", 5, &table.record.own);
    EXPECT_THROW(TypeParam::of(table), ThrowingTbl::HookFailure);
    EXPECT_THROW(this->query(table), ThrowingTbl::HookFailure);
    this->expectNewValues(table);
}

TYPED_TEST_P(FailingStatement, ColumnsAreTakenOneByOne)
{
    ThrowingTbl table;
    this->bindText(table, "own", 5, &table.record.own);
    const ThrowingTbl::column_t own = table.columns.back();
    const ThrowingTbl::column_t unbound("unbound", VARCHAR, own.valueType, nullptr);
    const CoutCapture capture;
    table.columns = {own, unbound};
    EXPECT_THROW(TypeParam::of(table), ThrowingTbl::HookFailure);
    EXPECT_EQ(capture.text(), "");
    table.columns = {unbound, own};
    EXPECT_THROW(TypeParam::of(table), ThrowingTbl::HookFailure);
    EXPECT_EQ(capture.text(), warningLine("value nullptr in column unbound"));
}

TYPED_TEST_P(FailingStatement, HookIsAskedForTextsAndNumbersOnly)
{
    ThrowingTbl table;
    for (const char* sqlType : {KEY, "", "REAL"}) {
        this->bindText(table, "own", 5, &table.record.own);
        table.columns.back().sqlType = sqlType;
        EXPECT_NO_THROW(TypeParam::of(table)) << sqlType;
    }
}

TYPED_TEST_P(FailingStatement, ExceptionOfTheWarningPassesThrough)
{
    SampleTbl table;
    this->bindText(table, "unbound", 4, nullptr);
    {
        const FailingCout failing;
        EXPECT_THROW(this->query(table), FailingCout::WriteFailure);
    }
    this->expectNewValues(table);
    {
        const FailingLogMutex failing;
        EXPECT_THROW(this->query(table), std::system_error);
    }
    this->expectNewValues(table);
}

TYPED_TEST_P(FailingStatement, FailedAllocationPassesThrough)
{
    SampleTbl table;
    this->bindText(table, "a name too long for the short string buffer", 4, &table.record.text);
    const int failures =
        failEachAllocation([&] { this->query(table); }, [&] { this->expectNewValues(table); });
    EXPECT_GT(failures, 0);
    this->expectNewValues(table);
}

REGISTER_TYPED_TEST_SUITE_P(FailingStatement, TableWithoutColumnsIsOutOfRange,
                            ExceptionOfTheHookPassesThrough, ColumnsAreTakenOneByOne,
                            HookIsAskedForTextsAndNumbersOnly, ExceptionOfTheWarningPassesThrough,
                            FailedAllocationPassesThrough);
