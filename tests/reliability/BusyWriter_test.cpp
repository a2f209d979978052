#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <set>
#include <string>
#include <thread>

#include "support/ChildProcess.h"
#include "support/CoutCapture.h"
#include "support/TempDir.h"
#include "support/database.h"
#include "support/generations.h"
#include "zav/Sqlite3Db.h"

namespace {

constexpr int READS = 100;
constexpr std::size_t GENERATIONS_SEEN = 5;

/// A process that updates every row over and over, parameter: the journal mode.
class BusyWriter : public testing::TestWithParam<const char*> {
protected:
    TempDir m_dir;
    const std::string m_file = makeGenerations(m_dir.file("faults.db"), GetParam());
    ChildProcess m_writer{
        [this](const ChildProcess::Signal& signal) { updateForever(m_file, signal); }};
};

TEST_P(BusyWriter, EveryReadSucceedsAndSeesOneGeneration)
{
    ASSERT_TRUE(m_writer.waitForSignal());
    Sqlite3Db db(0);
    ASSERT_EQ(db.openDb(m_file, true), 0);
    std::set<std::string> seen;
    for (int i = 0; i < READS || seen.size() < GENERATIONS_SEEN; ++i) {
        const Generations read = readGenerations(db);
        ASSERT_EQ(read.result, 1000);
        ASSERT_EQ(read.texts.size(), 1U);
        seen.merge(std::set<std::string>(read.texts));
    }
}

TEST_P(BusyWriter, EveryOpeningSucceedsAndReads)
{
    ASSERT_TRUE(m_writer.waitForSignal());
    for (int i = 0; i < READS; ++i) {
        Sqlite3Db db(0);
        ASSERT_EQ(db.openDb(m_file, true), 0);
        ASSERT_EQ(readGenerations(db).texts.size(), 1U);
    }
}

std::string nameOf(const testing::TestParamInfo<const char*>& tested)
{
    return tested.param;
}

INSTANTIATE_TEST_SUITE_P(Reliability, BusyWriter, testing::Values("DELETE", "WAL"), nameOf);

class LockedFile : public testing::Test {
protected:
    static void expectLocked(Sqlite3Db& db)
    {
        const CoutCapture output;
        EXPECT_EQ(readGenerations(db).result, -2);
        EXPECT_EQ(output.text(),
                  "[ERROR] SQL3::getTbl() Sql Query failed: database is locked Err=5\n");
    }

    /// Commits after a while, of which the tests only need that it is less than the patience of a
    /// query.
    static void commitSoon(OpenFile& writer)
    {
        std::this_thread::sleep_for(std::chrono::milliseconds(300));
        writer.run("COMMIT");
    }

    TempDir m_dir;
    const std::string m_file = makeGenerations(m_dir.file("faults.db"), "DELETE");
    Sqlite3Db m_db{0};
};

TEST_F(LockedFile, OpensAndIsReadOnceFree)
{
    OpenFile writer(m_file);
    writer.run("BEGIN EXCLUSIVE");
    ASSERT_EQ(m_db.openDb(m_file, true), 0);
    expectLocked(m_db);
    writer.run("COMMIT");
    EXPECT_EQ(readGenerations(m_db).result, 1000);
}

TEST_F(LockedFile, IsWaitedForByTheFirstQuery)
{
    OpenFile writer(m_file);
    writer.run("BEGIN EXCLUSIVE");
    ASSERT_EQ(m_db.openDb(m_file, true), 0);
    std::thread committing(commitSoon, std::ref(writer));
    EXPECT_EQ(readGenerations(m_db).result, 1000);
    committing.join();
}

}  // namespace
