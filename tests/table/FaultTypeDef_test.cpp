#include "zav/FaultTypeDef.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "support/records.h"
#include "support/standsBefore.h"

namespace {

const std::string LONG_TEXT = "a text too long for the short string buffer";

FaultTypeDef sample()
{
    return makeFaultTypeDef(4711, LONG_TEXT, "warning", 815, 3);
}

TEST(FaultTypeDef, DefaultIsZerosAndEmptyStrings)
{
    const FaultTypeDef record;
    EXPECT_EQ(record.code, 0U);
    EXPECT_EQ(record.alias, "");
    EXPECT_EQ(record.type, "");
    EXPECT_EQ(record.bug, 0U);
    EXPECT_EQ(record.clear_after_cycle_nr, 0U);
}

TEST(FaultTypeDef, FieldsHaveTheWidthsOfTheirColumns)
{
    EXPECT_TRUE((std::is_same<decltype(FaultTypeDef::code), std::uint32_t>::value));
    EXPECT_TRUE((std::is_same<decltype(FaultTypeDef::alias), std::string>::value));
    EXPECT_TRUE((std::is_same<decltype(FaultTypeDef::type), std::string>::value));
    EXPECT_TRUE((std::is_same<decltype(FaultTypeDef::bug), std::uint32_t>::value));
    EXPECT_TRUE((std::is_same<decltype(FaultTypeDef::clear_after_cycle_nr), std::uint16_t>::value));
}

TEST(FaultTypeDef, FieldsStandInTheOrderOfTheColumns)
{
    const FaultTypeDef record;
    EXPECT_EQ(static_cast<const void*>(&record.code), &record);
    EXPECT_TRUE(standsBefore(&record.code, &record.alias));
    EXPECT_TRUE(standsBefore(&record.alias, &record.type));
    EXPECT_TRUE(standsBefore(&record.type, &record.bug));
    EXPECT_TRUE(standsBefore(&record.bug, &record.clear_after_cycle_nr));
}

TEST(FaultTypeDef, CodeHoldsMoreThan16Bits)
{
    FaultTypeDef record;
    record.code = 65536;
    EXPECT_EQ(record.code, 65536U);
}

TEST(FaultTypeDef, IsNotPolymorphic)
{
    EXPECT_FALSE(std::is_polymorphic<FaultTypeDef>::value);
}

TEST(FaultTypeDef, CopyHasAllFieldsAndOwnsItsStrings)
{
    FaultTypeDef source = sample();
    const FaultTypeDef copy(source);
    EXPECT_EQ(fieldsOf(source), fieldsOf(sample()));
    source.alias[0] = 'X';
    EXPECT_EQ(fieldsOf(copy), fieldsOf(sample()));
}

TEST(FaultTypeDef, AssignmentReplacesAllFields)
{
    const FaultTypeDef source = sample();
    FaultTypeDef target = makeFaultTypeDef(1, "alias", "type", 2, 4);
    FaultTypeDef& result = (target = source);
    EXPECT_EQ(&result, &target);
    EXPECT_EQ(fieldsOf(target), fieldsOf(sample()));
    EXPECT_EQ(fieldsOf(source), fieldsOf(sample()));
}

TEST(FaultTypeDef, AssignmentToItselfChangesNothing)
{
    FaultTypeDef record = sample();
    const FaultTypeDef& same = record;
    record = same;
    EXPECT_EQ(fieldsOf(record), fieldsOf(sample()));
}

// NOLINTBEGIN(performance-move-const-arg, bugprone-use-after-move): there is no move to be made
TEST(FaultTypeDef, MovingCopies)
{
    FaultTypeDef source = sample();
    const FaultTypeDef constructed(std::move(source));
    EXPECT_EQ(fieldsOf(constructed), fieldsOf(sample()));
    EXPECT_EQ(fieldsOf(source), fieldsOf(sample()));

    FaultTypeDef assigned;
    assigned = std::move(source);
    EXPECT_EQ(fieldsOf(assigned), fieldsOf(sample()));
    EXPECT_EQ(fieldsOf(source), fieldsOf(sample()));
}

TEST(FaultTypeDef, AppendingToAVectorCopies)
{
    FaultTypeDef source = sample();
    std::vector<FaultTypeDef> records;
    records.push_back(std::move(source));
    EXPECT_EQ(fieldsOf(records.front()), fieldsOf(sample()));
    EXPECT_EQ(fieldsOf(source), fieldsOf(sample()));
}
// NOLINTEND(performance-move-const-arg, bugprone-use-after-move)

TEST(FaultTypeDef, HasNoMoveThatCouldNotThrow)
{
    EXPECT_FALSE(std::is_nothrow_move_constructible<FaultTypeDef>::value);
    EXPECT_FALSE(std::is_nothrow_move_assignable<FaultTypeDef>::value);
}

TEST(FaultTypeDef, StringsHoldAnyBytes)
{
    const std::string bytes("\xC4\x00'\"\xFF\n", 6);
    FaultTypeDef record;
    record.alias = bytes;
    const FaultTypeDef copy(record);
    EXPECT_EQ(copy.alias, bytes);
}

}  // namespace
