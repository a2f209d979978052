// How much of the file a connection keeps in memory, seen in what its scans read.

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <string>

#include "support/CoutCapture.h"
#include "support/TempDir.h"
#include "support/autoExtension.h"
#include "support/database.h"
#include "support/query.h"
#include "zav/Sqlite3Db.h"

namespace {

/// SQLite's handle of the last connection that was opened while it lives.
class OpenedHandle {
public:
    OpenedHandle() { addAutoExtension(onOpen); }
    ~OpenedHandle() { removeAutoExtension(onOpen); }
    OpenedHandle(const OpenedHandle&) = delete;
    OpenedHandle& operator=(const OpenedHandle&) = delete;

    /// @return a counter of the handle; it starts again from zero.
    static int take(int counter)
    {
        int current = 0;
        int highest = 0;
        sqlite3_db_status(m_db, counter, &current, &highest, 1);
        return current;
    }

private:
    static int onOpen(sqlite3* db, char** /*errorText*/, const sqlite3_api_routines* /*api*/)
    {
        m_db = db;
        return SQLITE_OK;
    }

    static sqlite3* m_db;
};

sqlite3* OpenedHandle::m_db = nullptr;

constexpr const char* SCAN = R"(SELECT count(*) FROM "descriptions" WHERE remedy LIKE '%x')";
constexpr int MIB = 1024 * 1024;

class PageCache : public ::testing::Test {
protected:
    /// @return a database file with so many MiB of texts.
    std::string makeFile(int mib) const
    {
        return makeDatabase(
            m_dir.file("texts.db"),
            "WITH RECURSIVE n(n) AS (SELECT 1 UNION ALL SELECT n + 1 FROM n LIMIT " +
                std::to_string(mib) +
                " * 256)"
                R"(INSERT INTO "descriptions" ("remedy")
                                   SELECT printf('%4000d', n) FROM n)");
    }

    /// Scans a file of so many MiB twice.
    void scanTwice(int mib)
    {
        const OpenedHandle handle;
        ASSERT_EQ(m_db.openDb(makeFile(mib), true), 0);
        ASSERT_EQ(query(m_db, SCAN), "count(*)|0");
        m_readByFirst = OpenedHandle::take(SQLITE_DBSTATUS_CACHE_MISS);
        ASSERT_EQ(query(m_db, SCAN), "count(*)|0");
        m_readBySecond = OpenedHandle::take(SQLITE_DBSTATUS_CACHE_MISS);
        m_kept = OpenedHandle::take(SQLITE_DBSTATUS_CACHE_USED);
    }

    const TempDir m_dir;
    Sqlite3Db m_db{0};
    int m_readByFirst = 0;
    int m_readBySecond = 0;
    int m_kept = 0;
};

TEST_F(PageCache, OfAnOrdinaryFileKeepsItAll)
{
    scanTwice(8);
    EXPECT_GE(m_readByFirst, 8 * 256);
    EXPECT_EQ(m_readBySecond, 0);
    EXPECT_LT(m_kept, 9 * MIB);
}

TEST_F(PageCache, OfAHugeFileIsBounded)
{
    scanTwice(24);
    EXPECT_GT(m_readBySecond, 0);
    EXPECT_LT(m_kept, 21 * MIB);
}

TEST_F(PageCache, OfADamagedFileDoesNotKeepItFromOpening)
{
    const std::string file = makeFile(1);
    runSql(file, "PRAGMA writable_schema=ON; UPDATE sqlite_master SET sql='damaged'");
    const CoutCapture cout;
    EXPECT_EQ(m_db.openDb(file, true), 0);
    EXPECT_EQ(m_db.lastErrorText(), "");
    EXPECT_EQ(cout.text(), "");
    EXPECT_EQ(query(m_db, "SELECT * FROM \"descriptions\""),
              "11: malformed database schema (fault_type_definition)");
}

}  // namespace
