#include "zav/Descriptions.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <string>
#include <type_traits>
#include <typeinfo>
#include <utility>
#include <vector>

#include "support/records.h"
#include "support/standsBefore.h"

namespace {

const std::string LONG_TEXT = "a text too long for the short string buffer";

Descriptions sample()
{
    return makeDescriptions(7, 12, 2, "Overheat", "Too hot", LONG_TEXT, "none", "Cool down");
}

/// Tells when it is destroyed.
class Derived : public Descriptions {
public:
    explicit Derived(int& destroyed) : m_destroyed(destroyed) {}
    Derived(const Derived&) = delete;
    Derived& operator=(const Derived&) = delete;
    ~Derived() override { ++m_destroyed; }

private:
    int& m_destroyed;
};

TEST(Descriptions, DefaultIsZerosAndEmptyStrings)
{
    const Descriptions record;
    EXPECT_EQ(record.id, 0U);
    EXPECT_EQ(record.id_fault_type, 0U);
    EXPECT_EQ(record.id_language, 0U);
    EXPECT_EQ(record.name, "");
    EXPECT_EQ(record.short_description, "");
    EXPECT_EQ(record.description, "");
    EXPECT_EQ(record.comment, "");
    EXPECT_EQ(record.remedy, "");
}

TEST(Descriptions, FieldsHaveTheWidthsOfTheirColumns)
{
    EXPECT_TRUE((std::is_same<decltype(Descriptions::id), std::uint16_t>::value));
    EXPECT_TRUE((std::is_same<decltype(Descriptions::id_fault_type), std::uint16_t>::value));
    EXPECT_TRUE((std::is_same<decltype(Descriptions::id_language), std::uint16_t>::value));
    EXPECT_TRUE((std::is_same<decltype(Descriptions::name), std::string>::value));
    EXPECT_TRUE((std::is_same<decltype(Descriptions::short_description), std::string>::value));
    EXPECT_TRUE((std::is_same<decltype(Descriptions::description), std::string>::value));
    EXPECT_TRUE((std::is_same<decltype(Descriptions::comment), std::string>::value));
    EXPECT_TRUE((std::is_same<decltype(Descriptions::remedy), std::string>::value));
}

TEST(Descriptions, FieldsStandInTheOrderOfTheColumns)
{
    const Descriptions record;
    EXPECT_TRUE(standsBefore(&record.id, &record.id_fault_type));
    EXPECT_TRUE(standsBefore(&record.id_fault_type, &record.id_language));
    EXPECT_TRUE(standsBefore(&record.id_language, &record.name));
    EXPECT_TRUE(standsBefore(&record.name, &record.short_description));
    EXPECT_TRUE(standsBefore(&record.short_description, &record.description));
    EXPECT_TRUE(standsBefore(&record.description, &record.comment));
    EXPECT_TRUE(standsBefore(&record.comment, &record.remedy));
}

TEST(Descriptions, CopyHasAllFieldsAndOwnsItsStrings)
{
    Descriptions source = sample();
    const Descriptions copy(source);
    EXPECT_EQ(fieldsOf(source), fieldsOf(sample()));
    source.description[0] = 'X';
    EXPECT_EQ(fieldsOf(copy), fieldsOf(sample()));
}

TEST(Descriptions, AssignmentReplacesAllFields)
{
    const Descriptions source = sample();
    Descriptions target = makeDescriptions(1, 2, 3, "n", "s", "d", "c", "r");
    Descriptions& result = (target = source);
    EXPECT_EQ(&result, &target);
    EXPECT_EQ(fieldsOf(target), fieldsOf(sample()));
    EXPECT_EQ(fieldsOf(source), fieldsOf(sample()));
}

TEST(Descriptions, AssignmentToItselfChangesNothing)
{
    Descriptions record = sample();
    const Descriptions& same = record;
    record = same;
    EXPECT_EQ(fieldsOf(record), fieldsOf(sample()));
}

TEST(Descriptions, AssignmentLeavesTheDynamicTypeAlone)
{
    int destroyed = 0;
    Derived derived(destroyed);
    Descriptions& target = derived;
    target = sample();
    EXPECT_EQ(fieldsOf(target), fieldsOf(sample()));
    EXPECT_EQ(typeid(target), typeid(Derived));
}

// NOLINTBEGIN(performance-move-const-arg, bugprone-use-after-move): there is no move to be made
TEST(Descriptions, MovingCopies)
{
    Descriptions source = sample();
    const Descriptions constructed(std::move(source));
    EXPECT_EQ(fieldsOf(constructed), fieldsOf(sample()));
    EXPECT_EQ(fieldsOf(source), fieldsOf(sample()));

    Descriptions assigned;
    assigned = std::move(source);
    EXPECT_EQ(fieldsOf(assigned), fieldsOf(sample()));
    EXPECT_EQ(fieldsOf(source), fieldsOf(sample()));
}

TEST(Descriptions, AppendingToAVectorCopies)
{
    Descriptions source = sample();
    std::vector<Descriptions> records;
    records.push_back(std::move(source));
    EXPECT_EQ(fieldsOf(records.front()), fieldsOf(sample()));
    EXPECT_EQ(fieldsOf(source), fieldsOf(sample()));
}
// NOLINTEND(performance-move-const-arg, bugprone-use-after-move)

TEST(Descriptions, HasNoMoveThatCouldNotThrow)
{
    EXPECT_FALSE(std::is_nothrow_move_constructible<Descriptions>::value);
    EXPECT_FALSE(std::is_nothrow_move_assignable<Descriptions>::value);
}

TEST(Descriptions, DestroyingThroughAPointerRunsTheDestructorOfTheDynamicType)
{
    int destroyed = 0;
    {
        const std::unique_ptr<Descriptions> record(new Derived(destroyed));
        EXPECT_EQ(destroyed, 0);
    }
    EXPECT_EQ(destroyed, 1);
}

TEST(Descriptions, CarriesRunTimeTypeInformation)
{
    EXPECT_TRUE(std::has_virtual_destructor<Descriptions>::value);
    const Descriptions record;
    const Descriptions& reference = record;
    EXPECT_EQ(typeid(reference), typeid(Descriptions));
}

TEST(Descriptions, StringsHoldAnyBytes)
{
    const std::string bytes("\xC4\x00'\"\xFF\n", 6);
    Descriptions record;
    record.remedy = bytes;
    const Descriptions copy(record);
    EXPECT_EQ(copy.remedy, bytes);
}

}  // namespace
