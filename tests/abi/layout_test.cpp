// The layout of what applications compiled for 32-bit ARM hold by value or reach into. The headers
// must give it, and the objects that the library makes must have it. Compiled without access
// control: private members are part of a layout too.

#include <gtest/gtest.h>
#include <zav/DescriptionDb.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

// A class with bases or virtual functions has no offsets in the letter of the standard; its ABI
// has.
#pragma GCC diagnostic ignored "-Winvalid-offsetof"

namespace {

using FaultTypes = SqlTbl<FaultTypeDef>;
using Texts = SqlTbl<Descriptions>;

static_assert(sizeof(void*) == 4 && sizeof(std::string) == 24 && sizeof(std::vector<int>) == 12,
              "the layout below is that of a 32-bit system");

static_assert(sizeof(FaultTypeDef) == 60, "");
static_assert(offsetof(FaultTypeDef, code) == 0, "");
static_assert(offsetof(FaultTypeDef, alias) == 4, "");
static_assert(offsetof(FaultTypeDef, type) == 28, "");
static_assert(offsetof(FaultTypeDef, bug) == 52, "");
static_assert(offsetof(FaultTypeDef, clear_after_cycle_nr) == 56, "");

static_assert(sizeof(Descriptions) == 132, "");
static_assert(offsetof(Descriptions, id) == 4, "after the virtual table");
static_assert(offsetof(Descriptions, id_fault_type) == 6, "");
static_assert(offsetof(Descriptions, id_language) == 8, "");
static_assert(offsetof(Descriptions, name) == 12, "");
static_assert(offsetof(Descriptions, short_description) == 36, "");
static_assert(offsetof(Descriptions, description) == 60, "");
static_assert(offsetof(Descriptions, comment) == 84, "");
static_assert(offsetof(Descriptions, remedy) == 108, "");

template <class Table>
constexpr bool hasColumnLayout()
{
    using Column = typename Table::column_t;
    return sizeof(typename Table::columnValueType_t) == 4 && sizeof(Column) == 56 &&
           offsetof(Column, name) == 0 && offsetof(Column, sqlType) == 24 &&
           offsetof(Column, valueType) == 48 && offsetof(Column, pValue) == 52;
}
static_assert(hasColumnLayout<FaultTypes>(), "");
static_assert(hasColumnLayout<Texts>(), "");

static_assert(sizeof(FaultTypes) == 100, "");
static_assert(offsetof(FaultTypes, columns) == 4, "after the virtual table");
static_assert(offsetof(FaultTypes, record) == 16, "");
static_assert(offsetof(FaultTypes, tableName) == 76, "");
static_assert(sizeof(Texts) == 172, "");
static_assert(offsetof(Texts, columns) == 4, "after the virtual table");
static_assert(offsetof(Texts, record) == 16, "");
static_assert(offsetof(Texts, tableName) == 148, "");
static_assert(sizeof(ZavSqlFaultTypeDefTbl) == sizeof(FaultTypes), "no members of its own");
static_assert(sizeof(ZavSqlDescriptionsTbl) == sizeof(Texts), "no members of its own");

static_assert(sizeof(DescriptionDb) == 276, "");
static_assert(offsetof(DescriptionDb, m_bOpen) == 0, "no virtual table");
static_assert(offsetof(DescriptionDb, m_faultTypeDefTbl) == 4, "");
static_assert(offsetof(DescriptionDb, m_descriptionsTbl) == 104, "");

static_assert(offsetof(Sqlite3Db, m_dbgLevel) == 4, "after the virtual table");
static_assert(offsetof(Sqlite3Db, m_path) == 8, "");
static_assert(offsetof(Sqlite3Db, m_lastCode) == 32, "");
static_assert(offsetof(Sqlite3Db, m_dbState) == 36, "");
static_assert(offsetof(Sqlite3Db, m_readOnly) == 40, "");
static_assert(offsetof(Sqlite3Db, m_pDb) == sizeof(Sqlite3Db) - 4, "the last member");

/// What stands at an offset of an object.
template <class Value, class Object>
const Value& at(const Object& object, std::size_t offset)
{
    const auto address = reinterpret_cast<std::uintptr_t>(&object) + offset;
    return *reinterpret_cast<const Value*>(address);
}

/// The columns of a table that the library made: name, type of value and the bound field's offset.
struct Binding {
    std::string name;
    std::uint32_t valueType;
    std::ptrdiff_t field;

    bool operator==(const Binding& other) const
    {
        return name == other.name && valueType == other.valueType && field == other.field;
    }
};

void PrintTo(const Binding& binding, std::ostream* stream)
{
    *stream << binding.name << ", " << binding.valueType << ", at " << binding.field;
}

template <class Table>
std::vector<Binding> bindingsOf(const Table& table)
{
    const std::size_t columns = 4;
    const std::size_t record = 16;
    const char* const first = at<const char*>(table, columns);
    const char* const last = at<const char*>(table, columns + 4);
    std::vector<Binding> bindings;
    for (const char* column = first; column != last; column += 56) {
        bindings.push_back({at<std::string>(*column, 0), at<std::uint32_t>(*column, 48),
                            at<const char*>(*column, 52) - &at<char>(table, record)});
    }
    return bindings;
}

TEST(Layout, LibraryMakesTheFaultTypesAsTheHeadersSay)
{
    const ZavSqlFaultTypeDefTbl table("a name");
    EXPECT_EQ(at<std::string>(table, 76), "a name");
    EXPECT_EQ(bindingsOf(table), (std::vector<Binding>{{"code", 2, 0},
                                                       {"alias", 4, 4},
                                                       {"type", 4, 28},
                                                       {"bug", 2, 52},
                                                       {"clear_after_cycle_nr", 3, 56}}));
}

TEST(Layout, LibraryMakesTheDescriptionsAsTheHeadersSay)
{
    const ZavSqlDescriptionsTbl table("a name");
    EXPECT_EQ(at<std::string>(table, 148), "a name");
    EXPECT_EQ(bindingsOf(table), (std::vector<Binding>{{"id", 3, 4},
                                                       {"id_fault_type", 3, 6},
                                                       {"id_language", 3, 8},
                                                       {"name", 4, 12},
                                                       {"short_description", 4, 36},
                                                       {"description", 4, 60},
                                                       {"comment", 4, 84},
                                                       {"remedy", 4, 108}}));
}

TEST(Layout, LibraryMakesTheServiceAsTheHeadersSay)
{
    const DescriptionDb& service = *DescriptionDb::getInstance();
    EXPECT_FALSE(at<bool>(service, 0));
    EXPECT_EQ(at<std::string>(service, 4 + 76), "fault_type_definition");
    EXPECT_EQ(at<std::string>(service, 104 + 148), "descriptions");
}

TEST(Layout, LibraryMakesTheConnectionAsTheHeadersSay)
{
    Sqlite3Db connection(7);
    EXPECT_EQ(at<std::uint32_t>(connection, 4), 7U);
    EXPECT_EQ(at<std::string>(connection, 8), "");
    EXPECT_EQ(at<std::uint32_t>(connection, 32), 0U);
    EXPECT_EQ(at<std::int32_t>(connection, 36), 0);
    EXPECT_FALSE(at<bool>(connection, 40));
    EXPECT_EQ(at<void*>(connection, sizeof(Sqlite3Db) - 4), nullptr);

    ASSERT_EQ(connection.openDb(":memory:", false), 0);
    EXPECT_EQ(at<std::int32_t>(connection, 36), 1);
    EXPECT_NE(at<void*>(connection, sizeof(Sqlite3Db) - 4), nullptr);
}

}  // namespace
