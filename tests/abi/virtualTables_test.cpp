// The order of the virtual tables, by which applications call the library and are called by it. It
// is read from what the headers compile to, and from the library's own tables.

#include <dlfcn.h>
#include <gtest/gtest.h>
#include <link.h>
#include <zav/DescriptionDb.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>

namespace {

constexpr std::ptrdiff_t NOT_VIRTUAL = -1;

/// The slot through which a call of a member function goes, from the C++ ABI's representation of a
/// pointer to it: 32-bit ARM, where a function's address may be odd, tells a virtual one elsewhere
/// than the other architectures.
template <class Member>
std::ptrdiff_t slotOf(Member member)
{
    struct {
        std::ptrdiff_t function;
        std::ptrdiff_t adjustment;
    } representation;
    static_assert(sizeof representation == sizeof member);
    std::memcpy(&representation, &member, sizeof member);
#ifdef __arm__
    const bool isVirtual = (representation.adjustment & 1) != 0;
    const std::ptrdiff_t offset = representation.function;
#else
    const bool isVirtual = (representation.function & 1) != 0;
    const std::ptrdiff_t offset = representation.function - 1;
#endif
    return isVirtual ? offset / static_cast<std::ptrdiff_t>(sizeof(void*)) : NOT_VIRTUAL;
}

void* exported(const std::string& mangledName)
{
    void* const address = dlsym(RTLD_DEFAULT, mangledName.c_str());
    EXPECT_NE(address, nullptr) << mangledName;
    return address;
}

/// A virtual table in the library: behind two entries, offset to top and type, its slots.
class VirtualTable {
public:
    explicit VirtualTable(const std::string& mangledClass)
        : m_entries(static_cast<void**>(exported("_ZTV" + mangledClass)))
    {
    }

    void* slot(std::size_t number) const { return m_entries[2 + number]; }

    std::size_t slots() const
    {
        Dl_info info;
        void* symbol = nullptr;
        EXPECT_NE(dladdr1(m_entries, &info, &symbol, RTLD_DL_SYMENT), 0);
        return static_cast<const ElfW(Sym)*>(symbol)->st_size / sizeof(void*) - 2;
    }

private:
    void** m_entries;
};

template <class Record>
void expectSlotsOfTheHeaders()
{
    using Table = SqlTbl<Record>;
    // 0 and 1 are the destructors, to which there are no pointers.
    EXPECT_EQ(slotOf(&Table::getSqlInsertValuesQuery), 2);
    EXPECT_EQ(slotOf(&Table::getSqlUpdateValuesQuery), 3);
    EXPECT_EQ(slotOf(&Table::init), 4);
    EXPECT_EQ(slotOf(&Table::rebuild), 5);
    EXPECT_EQ(slotOf(&Table::convertValueToStr), 6);
    EXPECT_EQ(slotOf(&Table::convertValueFromStr), 7);
}

template <class Record>
void expectNotVirtual()
{
    using Table = SqlTbl<Record>;
    EXPECT_EQ(slotOf(&Table::getSqlInsertValues), NOT_VIRTUAL);
    EXPECT_EQ(slotOf(&Table::getSqlUpdateValues), NOT_VIRTUAL);
    EXPECT_EQ(slotOf(&Table::reorderColumns), NOT_VIRTUAL);
    EXPECT_EQ(slotOf(&Table::setDatafromSqlResult), NOT_VIRTUAL);
}

/// @param record  the record type's mangled name.
/// @param table   the concrete table's mangled name.
void expectSlotsOfTheLibrary(const std::string& record, const std::string& table)
{
    const VirtualTable virtualTable(table);
    const std::string text = "RKNSt7__cxx1112basic_stringIcSt11char_traitsIcESaIcEEE";
    const std::string base = "6SqlTblI" + record + "E";
    EXPECT_EQ(virtualTable.slots(), 8U);
    EXPECT_EQ(virtualTable.slot(2),
              exported("_ZN" + base + "23getSqlInsertValuesQueryB5cxx11ERKS0_"));
    EXPECT_EQ(virtualTable.slot(3),
              exported("_ZN" + base + "23getSqlUpdateValuesQueryB5cxx11ERKS0_"));
    EXPECT_EQ(virtualTable.slot(4), exported("_ZN" + table + "4initE" + text));
    EXPECT_EQ(virtualTable.slot(5), exported("_ZN" + base + "7rebuildE" + text));
    EXPECT_EQ(virtualTable.slot(6),
              exported("_ZNK" + base + "17convertValueToStrB5cxx11ENS1_17columnValueType_tEPv"));
    EXPECT_EQ(
        virtualTable.slot(7),
        exported("_ZNK" + base + "19convertValueFromStrENS1_17columnValueType_tE" + text + "Pv"));
}

/// Counts the calls of its destructor.
template <class Base>
class Dying : public Base {
public:
    explicit Dying(int* deaths) : m_deaths(deaths) {}
    ~Dying() override { ++*m_deaths; }

private:
    int* m_deaths;
};

struct Table : ZavSqlFaultTypeDefTbl {
    Table() : ZavSqlFaultTypeDefTbl("table") {}
};

struct Callback : Sqlite3DbCallback {
    int onRow(int /*columnCount*/, char** /*values*/, char** /*names*/) override { return 0; }
};

using Destructor = void (*)(void*);

Destructor destructorInSlot(void* object, std::size_t slot)
{
    return (*static_cast<Destructor**>(object))[slot];
}

TEST(VirtualTables, HeadersGiveTheOrderOfATable)
{
    expectSlotsOfTheHeaders<FaultTypeDef>();
    expectSlotsOfTheHeaders<Descriptions>();
}

TEST(VirtualTables, StatementsReorderingAndDecodingAreNotVirtual)
{
    expectNotVirtual<FaultTypeDef>();
    expectNotVirtual<Descriptions>();
}

TEST(VirtualTables, LibraryHasTheOrderOfTheFaultTypes)
{
    expectSlotsOfTheLibrary("12FaultTypeDef", "21ZavSqlFaultTypeDefTbl");
}

TEST(VirtualTables, LibraryHasTheOrderOfTheDescriptions)
{
    expectSlotsOfTheLibrary("12Descriptions", "21ZavSqlDescriptionsTbl");
}

/// Slot 0 destroys an object in its place, slot 1 also gives back its memory.
template <class Base>
void expectDestructorsFirst()
{
    using Object = Dying<Base>;
    int deaths = 0;
    alignas(Object) unsigned char storage[sizeof(Object)];
    auto* const destroyed = new (storage) Object(&deaths);
    destructorInSlot(destroyed, 0)(destroyed);
    EXPECT_EQ(deaths, 1);

    auto* const deleted = new Object(&deaths);
    destructorInSlot(deleted, 1)(deleted);
    EXPECT_EQ(deaths, 2);
}

TEST(VirtualTables, DestructorsStandFirst)
{
    expectDestructorsFirst<Table>();
    expectDestructorsFirst<Callback>();
    expectDestructorsFirst<Descriptions>();
}

TEST(VirtualTables, RowCallbackFollowsTheDestructors)
{
    EXPECT_EQ(slotOf(&Sqlite3DbCallback::onRow), 2);
    EXPECT_EQ(VirtualTable("17Sqlite3DbCallback").slots(), 3U);
}

TEST(VirtualTables, DescriptionsHaveTheirDestructorsAlone)
{
    const VirtualTable virtualTable("12Descriptions");
    EXPECT_EQ(virtualTable.slots(), 2U);
    EXPECT_EQ(virtualTable.slot(0), exported("_ZN12DescriptionsD1Ev"));
    EXPECT_EQ(virtualTable.slot(1), exported("_ZN12DescriptionsD0Ev"));
}

}  // namespace
