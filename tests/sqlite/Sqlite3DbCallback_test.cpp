#include <gtest/gtest.h>
#include <sqlite3.h>

#include <cstring>
#include <string>
#include <type_traits>
#include <typeinfo>
#include <vector>

#include "zav/Sqlite3Db.h"

namespace {

class Rows : public Sqlite3DbCallback {
public:
    Rows(std::vector<std::string>& lines, bool& isDestroyed)
        : m_lines(lines), m_isDestroyed(isDestroyed)
    {
    }
    ~Rows() override { m_isDestroyed = true; }

    int onRow(int columnCount, char** values, char** names) override
    {
        std::string line;
        for (int i = 0; i < columnCount; ++i) {
            line += std::string(names[i]) + "=" + (values[i] != nullptr ? values[i] : "NULL") + ";";
        }
        m_lines.push_back(line);
        return m_lines.size() < 2 ? 0 : 1;
    }

private:
    std::vector<std::string>& m_lines;
    bool& m_isDestroyed;
};

int passOn(void* callback, int columnCount, char** values, char** names)
{
    return static_cast<Sqlite3DbCallback*>(callback)->onRow(columnCount, values, names);
}

/// The slot of a virtual operation, from the form that the platform's ABI gives a pointer to it:
/// its offset in the virtual table, plus 1 where the mark of a virtual operation stands in the
/// same word.
template <class Operation>
std::size_t slotOf(Operation operation)
{
    std::size_t word = 0;
    static_assert(sizeof operation >= sizeof word, "holds the offset first");
    std::memcpy(&word, &operation, sizeof word);
    return word / sizeof(void*);
}

TEST(Sqlite3DbCallback, IsAbstractAndDestroyedThroughItsBase)
{
    EXPECT_TRUE(std::is_abstract<Sqlite3DbCallback>::value);
    EXPECT_TRUE(std::has_virtual_destructor<Sqlite3DbCallback>::value);
}

TEST(Sqlite3DbCallback, RowOperationFollowsTheTwoDestructors)
{
    EXPECT_EQ(slotOf(&Sqlite3DbCallback::onRow), 2U);
}

TEST(Sqlite3DbCallback, LibraryCarriesItsTypeInformation)
{
    std::vector<std::string> lines;
    bool isDestroyed = false;
    const Rows rows(lines, isDestroyed);
    const Sqlite3DbCallback& callback = rows;
    EXPECT_STREQ(typeid(Sqlite3DbCallback).name(), "17Sqlite3DbCallback");
    EXPECT_TRUE(typeid(callback) == typeid(Rows));
}

TEST(Sqlite3DbCallback, ReceivesRowsUntilItEndsTheQuery)
{
    std::vector<std::string> lines;
    bool isDestroyed = false;
    Sqlite3DbCallback* const callback = new Rows(lines, isDestroyed);
    sqlite3* db = nullptr;
    ASSERT_EQ(sqlite3_open(":memory:", &db), SQLITE_OK);

    EXPECT_EQ(
        sqlite3_exec(db, "SELECT 1 AS a, NULL AS b UNION ALL SELECT 2, 'x' UNION ALL SELECT 3, 4",
                     passOn, callback, nullptr),
        SQLITE_ABORT);

    EXPECT_EQ(lines, (std::vector<std::string>{"a=1;b=NULL;", "a=2;b=x;"}));
    EXPECT_FALSE(isDestroyed);
    delete callback;
    EXPECT_TRUE(isDestroyed);
    sqlite3_close(db);
}

}  // namespace
