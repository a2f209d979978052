#include <gtest/gtest.h>
#include <sqlite3.h>

#include <filesystem>
#include <string>
#include <vector>

#include "support/SqlTrace.h"
#include "support/TempDir.h"
#include "support/autoExtension.h"
#include "support/database.h"
#include "support/query.h"
#include "zav/Sqlite3Db.h"

namespace {

constexpr const char* INTERRUPTED = "9: interrupted";
constexpr int MEBIBYTE = 1024 * 1024;

/// More than a query may take of a small file.
constexpr int TOO_MUCH = 200 * MEBIBYTE;

constexpr const char* NUMBERS =
    "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n LIMIT ";

/// A thousand rows: enough for some looks at the budget.
std::string thousandRows(const std::string& columns)
{
    return NUMBERS + std::string("1000) SELECT ") + columns + " FROM n";
}

class QueryBudget : public testing::Test {
protected:
    std::string queryView(const std::string& select)
    {
        runSql(m_file, "CREATE VIEW v AS " + select);
        open();
        return query(m_db, "SELECT * FROM v");
    }

    void open() { ASSERT_EQ(m_db.openDb(m_file, true), 0); }

    /// Runs a query.
    /// @return the number of its rows; SQLite's code, negative, if it has failed.
    int countRows(const std::string& sql) const
    {
        char** result = nullptr;
        char* errorText = nullptr;
        int rows = 0;
        int columns = 0;
        const int code = m_db.getTable(sql, &result, &rows, &columns, &errorText);
        sqlite3_free_table(result);
        sqlite3_free(errorText);
        return code == SQLITE_OK ? rows : -code;
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

TEST_F(QueryBudget, EndsAViewThatNeverComesToARowAndIsNewForTheNextQuery)
{
    EXPECT_EQ(queryView("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n) "
                        "SELECT i FROM n WHERE i < 0"),
              INTERRUPTED);
    EXPECT_EQ(countRows(thousandRows("i")), 1000);
}

TEST_F(QueryBudget, EndsAViewThatSortsEndlessRows)
{
    EXPECT_EQ(queryView("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n) "
                        "SELECT i, hex(zeroblob(1000)) AS t FROM n ORDER BY t, i DESC"),
              INTERRUPTED);
}

TEST_F(QueryBudget, EndsEndlessRowsOfAnApplicationsOwnText)
{
    open();
    EXPECT_EQ(query(m_db,
                    "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n) "
                    "SELECT i, i AS j, i AS k FROM n"),
              INTERRUPTED);
}

TEST_F(QueryBudget, IsNewForEachQuery)
{
    EXPECT_EQ(queryView("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n) "
                        "SELECT i, i AS j, i AS k FROM n"),
              INTERRUPTED);
    EXPECT_EQ(countRows(thousandRows("i")), 1000);
}

TEST_F(QueryBudget, EndsWithItsQuery)
{
    SqlTrace trace;
    open();
    EXPECT_EQ(countRows(thousandRows("i")), 1000);
    // Run past the library, where the budget must not be looked at any more.
    std::vector<std::string> texts;
    const auto keep = [](void* list, int, char** values, char**) {
        static_cast<std::vector<std::string>*>(list)->emplace_back(values[0]);
        return 0;
    };
    const auto fileBytes = static_cast<int>(std::filesystem::file_size(m_file));
    ASSERT_EQ(sqlite3_limit(trace.connection(), SQLITE_LIMIT_LENGTH, TOO_MUCH), fileBytes * 3 / 2);
    EXPECT_EQ(sqlite3_exec(trace.connection(),
                           (NUMBERS + std::string("20) SELECT hex(zeroblob(8000000)) FROM n "
                                                  "ORDER BY i"))
                               .c_str(),
                           keep, &texts, nullptr),
              SQLITE_OK);
    EXPECT_EQ(texts.size(), 20U);
}

TEST_F(QueryBudget, GrowsWithTheLogOfAFileInWalMode)
{
    OpenFile writer(m_file);  // while it is open, the log is not moved into the file
    writer.run("PRAGMA journal_mode=WAL; PRAGMA wal_autocheckpoint=0; CREATE TABLE t(x);" +
               std::string(NUMBERS) + "2500) INSERT INTO t SELECT hex(zeroblob(500)) FROM n");
    open();
    EXPECT_EQ(countRows(NUMBERS + std::string("56) SELECT x FROM t, n")), 140000);
}

TEST_F(QueryBudget, HoldsAViewOfAsManyRowsAsIdsHaveOverSharedTexts)
{
    runSql(m_file,
           "CREATE TABLE shared(k INTEGER PRIMARY KEY, text);"
           "CREATE TABLE of_a_fault(id INTEGER PRIMARY KEY, k INTEGER);" +
               std::string(NUMBERS) +
               "100) INSERT INTO shared SELECT i, hex(zeroblob(800)) FROM n;" + NUMBERS +
               "65000) INSERT INTO of_a_fault SELECT i, i % 100 + 1 FROM n;"
               "CREATE VIEW v AS SELECT id, text FROM of_a_fault JOIN shared USING (k)");
    open();
    EXPECT_EQ(countRows("SELECT * FROM v"), 65000);
}

TEST_F(QueryBudget, IsNotForAWritingConnection)
{
    ASSERT_EQ(m_db.openDb(m_file, false), 0);
    EXPECT_EQ(query(m_db, NUMBERS + std::string("1000) INSERT INTO fault_type_definition(bug) "
                                                "SELECT i FROM n")),
              "");
}

void* g_taken = nullptr;

/// An SQL function by which, in the midst of a query, somebody else in the process takes memory.
void takeMemory(sqlite3_context* context, int /*count*/, sqlite3_value** /*values*/)
{
    if (g_taken == nullptr) {
        g_taken = sqlite3_malloc(TOO_MUCH);
    }
    sqlite3_result_int(context, 0);
}

int addTakeMemory(sqlite3* db, char** /*errorText*/, const sqlite3_api_routines* /*api*/)
{
    return sqlite3_create_function(db, "take_memory", 0, SQLITE_UTF8 | SQLITE_INNOCUOUS, nullptr,
                                   takeMemory, nullptr, nullptr);
}

class MemoryOfOthers : public QueryBudget {
protected:
    void SetUp() override { addAutoExtension(addTakeMemory); }
    void TearDown() override
    {
        removeAutoExtension(addTakeMemory);
        sqlite3_free(g_taken);
        g_taken = nullptr;
    }
};

TEST_F(MemoryOfOthers, TakenBeforeAQueryDoesNotCount)
{
    open();
    g_taken = sqlite3_malloc(TOO_MUCH);
    EXPECT_EQ(countRows(thousandRows("i")), 1000);
}

TEST_F(MemoryOfOthers, TakenBeforeAQueryMakesNoneRunTwice)
{
    const SqlTrace trace;
    open();
    g_taken = sqlite3_malloc(TOO_MUCH);
    const std::size_t before = trace.statements().size();
    EXPECT_EQ(countRows(thousandRows("i")), 1000);
    EXPECT_EQ(countRows("SELECT 1"), 1);
    // The second run of a query takes the place of this trace, for good.
    EXPECT_EQ(trace.statements().size(), before + 2);
}

TEST_F(MemoryOfOthers, TakenMeanwhileDoesNotCount)
{
    open();
    EXPECT_EQ(countRows(thousandRows("take_memory(), i")), 1000);
}

TEST_F(MemoryOfOthers, TakenMeanwhileHidesNoEndlessRows)
{
    open();
    EXPECT_EQ(query(m_db,
                    "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n) "
                    "SELECT take_memory(), i, i AS j FROM n"),
              INTERRUPTED);
}

TEST_F(MemoryOfOthers, TakenMeanwhileDoesNotCountAgainstAView)
{
    EXPECT_EQ(queryView("SELECT count(*) AS n FROM (" + thousandRows("take_memory(), i") + ")"),
              "n|1000");
}

}  // namespace
