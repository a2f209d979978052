// Every single operation that can fail is made to fail in turn, while the service opens a file and
// answers its four questions.

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <functional>
#include <iostream>
#include <new>
#include <string>
#include <vector>

#include "support/CoutCapture.h"
#include "support/FailingNew.h"
#include "support/FailingSqlite.h"
#include "support/FreshService.h"
#include "support/TempDir.h"
#include "support/database.h"
#include "support/sqliteMemory.h"

namespace {

constexpr const char* ROWS =
    "INSERT INTO fault_type_definition VALUES (17, 'E017, an alias too long for a short string',"
    " 'error', 3, 5), (18, 'E018', 'a type too long for a short string buffer', 'unreadable', 1);"
    "INSERT INTO descriptions VALUES (1, 17, 2, 'Overheat, a name too long for a short string',"
    " NULL, 'x', 99999, 'Cool down'), (2, 17, 3, 'Trop chaud', '', '', '', '');"
    // enough of them for a query to read several pages
    "WITH RECURSIVE n(i) AS (SELECT 100 UNION ALL SELECT i + 1 FROM n WHERE i < 140) "
    "INSERT INTO descriptions SELECT i, i, 1, 'name', hex(zeroblob(100)), '', '', '' FROM n";

/// What an application passes in, filled before the call.
struct Arguments {
    std::vector<FaultTypeDef> faultTypes{2};
    FaultTypeDef faultType;
    std::vector<Descriptions> descriptions{3};

    Arguments() { faultType.alias = "before"; }
    bool areUntouched() const
    {
        return faultTypes.size() == 2 && faultType.alias == "before" && descriptions.size() == 3;
    }
};

struct Operation {
    const char* name;
    std::function<int(DescriptionDb* service, Arguments& arguments)> run;
    int success;
    int failure;
};

const std::vector<Operation> QUERIES = {
    {"getFaultTypeDefTbl",
     [](DescriptionDb* service, Arguments& arguments) {
         return service->getFaultTypeDefTbl(arguments.faultTypes);
     },
     2, -2},
    {"getFaultTypeDef",
     [](DescriptionDb* service, Arguments& arguments) {
         return service->getFaultTypeDef(17, arguments.faultType);
     },
     0, -1},
    {"getDescriptionsTbl",
     [](DescriptionDb* service, Arguments& arguments) {
         return service->getDescriptionsTbl(arguments.descriptions);
     },
     43, -2},
    {"getDescriptionsByFC",
     [](DescriptionDb* service, Arguments& arguments) {
         return service->getDescriptionsByFC(17, arguments.descriptions);
     },
     2, -2},
};

void report(const char* operation, int faults)
{
    std::cout << "[   NOTE   ] " << operation << ": " << faults << " faults\n";
    EXPECT_GT(faults, 0) << operation;
}

class Faults : public testing::Test {
protected:
    void open()
    {
        const CoutCapture output;
        ASSERT_EQ(m_service->openDb(m_file, true), 0);
    }

    /// Runs a query that must succeed.
    void expectHealthy(const Operation& query)
    {
        Arguments arguments;
        const CoutCapture output;
        EXPECT_EQ(query.run(m_service.operator->(), arguments), query.success) << query.name;
    }

    /// Runs a query again and again, each time with the next operation of SQLite failing.
    /// @tparam Failing  FailingSqliteMemory or FailingSqliteReads.
    /// @param line  what is written by a failure; only its beginning if none is certain.
    template <class Failing>
    void failEach(const Operation& query, bool isFailureCertain, const std::string& line)
    {
        int faults = 0;
        for (long which = 1;; ++which) {
            Arguments arguments;
            const CoutCapture output;
            // A new connection: one that is in use has most of what it needs already.
            ASSERT_EQ(m_service->openDb(m_file, true), 0);
            Failing::failAt(which);
            const int result = query.run(m_service.operator->(), arguments);
            const bool hasFailed = Failing::hasFailed();
            Failing::failAt(0);
            std::cout.clear();  // left bad where SQLite had no memory for its text
            if (!hasFailed) {
                EXPECT_EQ(result, query.success);
                ASSERT_EQ(m_service->closeDb(), 0);
                break;
            }
            ++faults;
            if (result == query.failure) {
                EXPECT_TRUE(arguments.areUntouched()) << query.name << " " << which;
                const std::string lines = output.text();
                EXPECT_EQ(isFailureCertain ? lines : lines.substr(0, (m_openedLine + line).size()),
                          m_openedLine + line);
            } else {
                EXPECT_FALSE(isFailureCertain) << query.name << " " << which;
                EXPECT_EQ(result, query.success) << query.name << " " << which;
            }
            expectHealthy(query);
            ASSERT_EQ(m_service->closeDb(), 0);
        }
        report(query.name, faults);
    }

    /// Opens again and again, each time with the next operation of SQLite failing.
    template <class Failing>
    void failEachWhileOpening()
    {
        int faults = 0;
        for (long which = 1;; ++which) {
            const CoutCapture output;
            Failing::failAt(which);
            const int result = m_service->openDb(m_file, true);
            const bool hasFailed = Failing::hasFailed();
            Failing::failAt(0);
            if (result == 0) {
                expectHealthy(QUERIES.front());
                ASSERT_EQ(m_service->closeDb(), 0);
            } else {
                EXPECT_EQ(result, -2);
                EXPECT_EQ(output.text(), "[ERROR] ZAV::openDb() FAiled to open=" + m_file + "\n");
            }
            if (!hasFailed) {
                EXPECT_EQ(result, 0);
                break;
            }
            ++faults;
        }
        report("openDb", faults);
    }

    const std::string m_openedLine = "[DEBUG] ZAV::openDb() OK\n";
    TempDir m_dir;
    const std::string m_file = makeDatabase(m_dir.file("faults.db"), ROWS);
    FreshService m_service;
};

TEST_F(Faults, AllocationsOfTheInstance)
{
    report("getInstance", failEachAllocation(
                              [] {
                                  DescriptionDb::m_pInstance = nullptr;
                                  DescriptionDb::getInstance();
                              },
                              [] { EXPECT_EQ(DescriptionDb::m_pInstance, nullptr); }));
}

TEST_F(Faults, AllocationsOfTheOpening)
{
    const int faults = failEachAllocation(
        [this] {
            const CoutCapture output;
            m_service->closeDb();
            m_service->openDb(m_file, true);
        },
        [this] { EXPECT_EQ(m_service->closeDb(), -1); });
    EXPECT_EQ(m_service->closeDb(), 0);
    report("openDb", faults);
}

TEST_F(Faults, AllocationsOfTheQueries)
{
    open();
    for (const Operation& query : QUERIES) {
        expectHealthy(query);
        int calls = 0;
        Arguments arguments;
        int faults = 0;
        {
            const CoutCapture output;
            faults = failEachAllocation(
                [&] {
                    arguments = Arguments();
                    calls = lastTableMemory().calls;
                    query.run(m_service.operator->(), arguments);
                },
                [&] {
                    if (lastTableMemory().calls == calls) {  // not yet asked
                        EXPECT_TRUE(arguments.areUntouched()) << query.name;
                    } else {  // the result is the one thing that an exception leaves behind
                        sqlite3_free_table(lastTableMemory().result);
                    }
                });
        }
        expectHealthy(query);
        report(query.name, faults);
    }
}

TEST_F(Faults, AllocationsOfSqlite)
{
    const FailingSqliteMemory memory;
    for (const Operation& query : QUERIES) {
        failEach<FailingSqliteMemory>(query, false, "[ERROR] SQL3::getTbl() Sql Query failed: ");
    }
}

TEST_F(Faults, Reads)
{
    const FailingSqliteReads reads;
    for (const Operation& query : QUERIES) {
        failEach<FailingSqliteReads>(
            query, true, "[ERROR] SQL3::getTbl() Sql Query failed: disk I/O error Err=10\n");
    }
}

TEST_F(Faults, AllocationsOfSqliteWhileOpening)
{
    const FailingSqliteMemory memory;
    failEachWhileOpening<FailingSqliteMemory>();
}

TEST_F(Faults, ReadsWhileOpening)
{
    const FailingSqliteReads reads;
    failEachWhileOpening<FailingSqliteReads>();
}

}  // namespace
