#include "zav/FaultTypeDef.h"

#include <gtest/gtest.h>

#include <type_traits>

namespace {

TEST(FaultTypeDef, DefaultIsZerosAndEmptyStrings)
{
    const FaultTypeDef record;
    EXPECT_EQ(record.code, 0U);
    EXPECT_EQ(record.alias, "");
    EXPECT_EQ(record.type, "");
    EXPECT_EQ(record.bug, 0U);
    EXPECT_EQ(record.clear_after_cycle_nr, 0U);
}

TEST(FaultTypeDef, IsNotPolymorphic)
{
    EXPECT_FALSE(std::is_polymorphic<FaultTypeDef>::value);
}

TEST(FaultTypeDef, MovingCopies)
{
    FaultTypeDef source;
    source.alias = "an alias too long for the short string buffer";
    // NOLINTBEGIN(performance-move-const-arg, bugprone-use-after-move): there is no move to be made
    const FaultTypeDef target = std::move(source);
    EXPECT_EQ(target.alias, "an alias too long for the short string buffer");
    EXPECT_EQ(source.alias, target.alias);
    // NOLINTEND(performance-move-const-arg, bugprone-use-after-move)
}

}  // namespace
