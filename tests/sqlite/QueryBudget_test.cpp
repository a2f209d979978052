#include <gtest/gtest.h>
#include <sqlite3.h>

#include <string>

#include "support/TempDir.h"
#include "support/database.h"
#include "support/query.h"
#include "zav/Sqlite3Db.h"

namespace {

constexpr const char* INTERRUPTED = "9: interrupted";

class QueryBudget : public testing::Test {
protected:
    std::string queryView(const std::string& select)
    {
        runSql(m_file, "CREATE VIEW v AS " + select);
        EXPECT_EQ(m_db.openDb(m_file, true), 0);
        return query(m_db, "SELECT * FROM v");
    }

    TempDir m_dir;
    const std::string m_file = makeDatabase(m_dir.file("faults.db"));
    Sqlite3Db m_db{0};
};

TEST_F(QueryBudget, EndsAViewOfEndlessRows)
{
    EXPECT_EQ(queryView("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n) "
                        "SELECT i, i AS j, i AS k FROM n"),
              INTERRUPTED);
}

TEST_F(QueryBudget, EndsAViewThatNeverComesToARow)
{
    EXPECT_EQ(queryView("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n) "
                        "SELECT i FROM n WHERE i < 0"),
              INTERRUPTED);
}

TEST_F(QueryBudget, IsNewForEachQuery)
{
    EXPECT_EQ(queryView("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n) "
                        "SELECT i, i AS j, i AS k FROM n"),
              INTERRUPTED);
    EXPECT_EQ(query(m_db,
                    "SELECT count(*) AS n FROM (WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL "
                    "SELECT i + 1 FROM n LIMIT 100000) SELECT i FROM n)"),
              "n|100000");
}

TEST_F(QueryBudget, GrowsWithTheLogOfAFileInWalMode)
{
    OpenFile writer(m_file);  // while it is open, the log is not moved into the file
    writer.run(
        "PRAGMA journal_mode=WAL; PRAGMA wal_autocheckpoint=0;"
        "CREATE TABLE t(x); WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n "
        "LIMIT 2000) INSERT INTO t SELECT hex(zeroblob(500)) FROM n");
    ASSERT_EQ(m_db.openDb(m_file, true), 0);
    char** result = nullptr;
    char* errorText = nullptr;
    int rows = 0;
    int columns = 0;
    EXPECT_EQ(m_db.getTable("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n "
                            "LIMIT 40) SELECT x FROM t, n",
                            &result, &rows, &columns, &errorText),
              0);
    EXPECT_EQ(rows, 80000);
    sqlite3_free_table(result);
    sqlite3_free(errorText);
}

TEST_F(QueryBudget, IsNotForAWritingConnection)
{
    ASSERT_EQ(m_db.openDb(m_file, false), 0);
    EXPECT_EQ(query(m_db,
                    "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n "
                    "LIMIT 1000) INSERT INTO fault_type_definition(bug) SELECT i FROM n"),
              "");
}

}  // namespace
