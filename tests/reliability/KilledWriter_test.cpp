#include <gtest/gtest.h>
#include <sqlite3.h>

#include <filesystem>
#include <set>
#include <string>

#include "support/CoutCapture.h"
#include "support/TempDir.h"
#include "support/database.h"
#include "support/generations.h"
#include "support/query.h"
#include "zav/Sqlite3Db.h"

namespace {

const std::set<std::string> COMMITTED = {"0"};

/// A file that a writer was changing when it was killed, parameter: the journal mode.
class KilledWriter : public testing::TestWithParam<const char*> {
protected:
    bool isWal() const { return GetParam() == std::string("WAL"); }

    TempDir m_dir;
    const std::string m_file = makeGenerations(m_dir.file("faults.db"), GetParam());
    Sqlite3Db m_db{0};
};

/// @return SQLite's extended code of a first read through a read-only connection of its own.
int plainReadOnlyRead(const std::string& file)
{
    sqlite3* db = nullptr;
    sqlite3_open_v2(file.c_str(), &db, SQLITE_OPEN_READONLY, nullptr);
    sqlite3_exec(db, "SELECT * FROM descriptions", nullptr, nullptr, nullptr);
    const int code = sqlite3_extended_errcode(db);
    sqlite3_close(db);
    return code;
}

TEST_P(KilledWriter, LeavesUncommittedPagesOnTheDisk)
{
    const std::string before = contents(m_file);
    ASSERT_TRUE(killWriter(m_file));
    if (isWal()) {
        EXPECT_GT(std::filesystem::file_size(m_file + "-wal"), before.size() / 2);
    } else {
        EXPECT_NE(contents(m_file), before);
        EXPECT_EQ(plainReadOnlyRead(m_file), SQLITE_READONLY_ROLLBACK);
    }
}

TEST_P(KilledWriter, BeforeTheOpeningLeavesTheCommittedTexts)
{
    ASSERT_TRUE(killWriter(m_file));
    ASSERT_EQ(m_db.openDb(m_file, true), 0);
    EXPECT_FALSE(std::filesystem::exists(m_file + "-journal"));
    EXPECT_TRUE(m_db.isReadOnly());
    EXPECT_EQ(m_db.lastCode(), SQLITE_OK);

    const Generations read = readGenerations(m_db);
    EXPECT_EQ(read.result, 1000);
    EXPECT_EQ(read.texts, COMMITTED);
}

TEST_P(KilledWriter, BesideAnOpenReaderLeavesTheCommittedTexts)
{
    ASSERT_EQ(m_db.openDb(m_file, true), 0);
    ASSERT_EQ(readGenerations(m_db).texts, COMMITTED);
    ASSERT_TRUE(killWriter(m_file));
    const CoutCapture output;
    const Generations read = readGenerations(m_db);
    EXPECT_EQ(read.result, 1000);
    EXPECT_EQ(read.texts, COMMITTED);
    EXPECT_EQ(output.text(), "");
}

TEST_P(KilledWriter, LeavesAFileThatIsWrittenAgain)
{
    ASSERT_TRUE(killWriter(m_file));
    ASSERT_EQ(m_db.openDb(m_file, true), 0);
    runSql(m_file, "UPDATE descriptions SET name = 'new'");
    EXPECT_EQ(readGenerations(m_db).texts, std::set<std::string>{"new"});
}

std::string nameOf(const testing::TestParamInfo<const char*>& tested)
{
    return tested.param;
}

INSTANTIATE_TEST_SUITE_P(Reliability, KilledWriter, testing::Values("DELETE", "WAL"), nameOf);

}  // namespace
