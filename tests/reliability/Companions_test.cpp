// What lies beside a database belongs to somebody: reading must not delete, overwrite or wait for
// it, whatever it is.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sqlite3.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <functional>
#include <ostream>
#include <set>
#include <string>

#include "support/ChildProcess.h"
#include "support/CoutCapture.h"
#include "support/TempDir.h"
#include "support/WithoutRootRights.h"
#include "support/database.h"
#include "support/generations.h"
#include "zav/Sqlite3Db.h"

namespace {

namespace fs = std::filesystem;

constexpr unsigned SECONDS_UNTIL_A_HANG_ENDS = 60;

std::string failedQuery(const std::string& text)
{
    return "[ERROR] SQL3::getTbl() Sql Query failed: " + text + "\n";
}

const std::string READ_ONLY = failedQuery("attempt to write a readonly database Err=8");
const std::string CANNOT_OPEN = failedQuery("unable to open database file Err=14");

class Companions : public testing::Test {
protected:
    void SetUp() override { alarm(SECONDS_UNTIL_A_HANG_ENDS); }
    void TearDown() override { alarm(0); }

    std::string beside(const std::string& suffix) const { return m_file + suffix; }

    /// Opens the file where it is not open yet, and reads it.
    Generations read()
    {
        if (m_db.path().empty()) {
            EXPECT_EQ(m_db.openDb(m_file, true), 0);
        }
        const CoutCapture output;
        Generations generations = readGenerations(m_db);
        m_lines = output.text();
        return generations;
    }

    void expectRead()
    {
        const Generations generations = read();
        EXPECT_EQ(generations.result, 1000);
        EXPECT_EQ(generations.texts, std::set<std::string>{"0"});
        EXPECT_EQ(m_lines, "");
    }

    void expectFailure(const std::string& line)
    {
        EXPECT_EQ(read().result, -2);
        EXPECT_EQ(m_lines, line);
    }

    TempDir m_dir;
    const std::string m_file = m_dir.file("faults.db");
    Sqlite3Db m_db{0};
    std::string m_lines;
};

std::string bigEndian(std::size_t number)
{
    std::string bytes;
    for (int shift = 24; shift >= 0; shift -= 8) {
        bytes += static_cast<char>(number >> shift & 0xff);
    }
    return bytes;
}

/// How a journal ends whose transaction is part of one over several databases. From SQLite's file
/// format, "The Rollback Journal": the name, its length, its checksum, the journal's magic.
std::string superJournalRecord(const std::string& name)
{
    std::size_t sum = 0;
    for (const char letter : name) {
        sum += static_cast<std::size_t>(letter);
    }
    return bigEndian(0x40000000 / 4096 + 1) + name + bigEndian(name.size()) + bigEndian(sum) +
           "\xd9\xd5\x05\xf9\x20\xa1\x63\xd7";
}

class SuperJournal : public Companions {
protected:
    /// A journal to be rolled back that names a super-journal.
    void killWriterOfSeveralDatabases()
    {
        makeGenerations(m_file, "DELETE");
        ASSERT_TRUE(killWriter(m_file));
        setContents(m_journal, contents(m_journal) + superJournalRecord(m_super));
    }

    void expectNothingIsTouched()
    {
        const std::string database = contents(m_file);
        const std::string journal = contents(m_journal);
        expectFailure(READ_ONLY);
        expectFailure(READ_ONLY);
        EXPECT_EQ(contents(m_file), database);
        EXPECT_EQ(contents(m_journal), journal);
    }

    const std::string m_journal = beside("-journal");
    const std::string m_super = m_dir.file("a strangers file");
};

TEST_F(SuperJournal, IsNeverDeletedWhateverItIs)
{
    setContents(m_super, "precious");
    killWriterOfSeveralDatabases();
    expectNothingIsTouched();
    EXPECT_EQ(contents(m_super), "precious");
}

TEST_F(SuperJournal, OutOfSightDoesNotMakeHalfATransactionStay)
{
    killWriterOfSeveralDatabases();
    expectNothingIsTouched();
}

TEST_F(SuperJournal, IsLeftToTheProgramThatWroteIt)
{
    setContents(m_super, m_journal + '\0');
    killWriterOfSeveralDatabases();
    expectNothingIsTouched();
    runSql(m_file, "PRAGMA schema_version");  // which rolls back
    EXPECT_FALSE(fs::exists(m_journal));
    expectRead();
}

TEST_F(SuperJournal, OfAnotherLengthThanZeroIsNeededToKeepAJournalFromBeingRolledBack)
{
    makeGenerations(m_file, "DELETE");
    ASSERT_TRUE(killWriter(m_file));
    setContents(m_journal, contents(m_journal) + superJournalRecord(""));
    expectRead();
}

class EmptyFile : public Companions, public testing::WithParamInterface<const char*> {};

TEST_P(EmptyFile, KeepsWhatLiesBesideIt)
{
    setContents(m_file, "");
    setContents(beside(GetParam()), "whatever a writer has left");
    ASSERT_EQ(m_db.openDb(m_file, true), 0);
    for (int i = 0; i < 2; ++i) {
        expectFailure(failedQuery("no such table: descriptions Err=1"));
        EXPECT_EQ(contents(beside(GetParam())), "whatever a writer has left");
    }
}

INSTANTIATE_TEST_SUITE_P(Reliability, EmptyFile, testing::Values("-wal", "-journal", "-shm"),
                         [](const auto& tested) { return std::string(tested.param + 1); });

TEST_F(Companions, LogIsReadOnceTheEmptyFileHasItsContent)
{
    makeGenerations(m_file, "WAL");
    const std::string database = contents(m_file);
    OpenFile writer(m_file);  // while it is open, the log stays
    writer.run("UPDATE descriptions SET name = '0', remedy = 'of the log'");
    ASSERT_GT(fs::file_size(beside("-wal")), 0U);
    fs::resize_file(m_file, 0);
    expectFailure(failedQuery("no such table: descriptions Err=1"));
    setContents(m_file, database);
    expectRead();
}

/// What else may bear the name of a companion.
struct Stranger {
    const char* name;
    std::function<void(const std::string& path, const std::string& folder)> make;
};

void PrintTo(const Stranger& stranger, std::ostream* stream)
{
    *stream << stranger.name;
}

const Stranger STRANGERS[] = {
    {"Fifo", [](const std::string& path,
                const std::string& /*folder*/) { ASSERT_EQ(mkfifo(path.c_str(), 0600), 0); }},
    {"Folder",
     [](const std::string& path, const std::string& /*folder*/) { fs::create_directory(path); }},
    {"SymbolicLink",
     [](const std::string& path, const std::string& folder) {
         setContents(folder + "/target", "precious");
         fs::create_symlink(folder + "/target", path);
     }},
};

struct NoRegularFile {
    const char* companion;
    const char* journalMode;
    std::string line;
};

class Strangers : public Companions,
                  public testing::WithParamInterface<std::tuple<NoRegularFile, Stranger>> {};

TEST_P(Strangers, InTheNameOfACompanionAreNeitherWaitedForNorTouched)
{
    const auto& [companion, stranger] = GetParam();
    const std::string path = beside(companion.companion);
    makeGenerations(m_file, companion.journalMode);
    stranger.make(path, m_dir.path());
    const auto type = fs::symlink_status(path).type();

    expectFailure(companion.line);
    expectFailure(companion.line);
    ASSERT_EQ(m_db.closeDb(), 0);

    EXPECT_EQ(fs::symlink_status(path).type(), type);
    if (fs::exists(m_dir.file("target"))) {
        EXPECT_EQ(contents(m_dir.file("target")), "precious");
    }
    fs::remove(path);
    expectRead();
}

void PrintTo(const NoRegularFile& tested, std::ostream* stream)
{
    *stream << tested.companion;
}

INSTANTIATE_TEST_SUITE_P(
    Reliability, Strangers,
    testing::Combine(testing::Values(NoRegularFile{"-journal", "DELETE", READ_ONLY},
                                     NoRegularFile{"-wal", "WAL", CANNOT_OPEN},
                                     NoRegularFile{"-shm", "WAL", CANNOT_OPEN}),
                     testing::ValuesIn(STRANGERS)),
    [](const auto& tested) {
        return std::string(std::get<0>(tested.param).companion + 1) +
               std::get<1>(tested.param).name;
    });

TEST_F(Companions, DanglingLinkInTheNameOfALogIsNotFollowed)
{
    makeGenerations(m_file, "WAL");
    fs::create_symlink(m_dir.file("nowhere"), beside("-wal"));
    expectFailure(CANNOT_OPEN);
    EXPECT_FALSE(fs::exists(m_dir.file("nowhere")));
}

TEST_F(Companions, AreThoseBesideTheFileThatThePathResolvesTo)
{
    const std::string link = m_dir.file("link.db");
    makeGenerations(m_file, "DELETE");
    ASSERT_EQ(mkfifo(beside("-journal").c_str(), 0600), 0);
    fs::create_symlink(m_file, link);
    ASSERT_EQ(m_db.openDb(link, true), 0);
    expectFailure(READ_ONLY);
}

class SecondLink : public Companions {
protected:
    void makeFileInWalModeWithLog()
    {
        makeGenerations(m_file, "WAL");
        ASSERT_TRUE(killWriter(m_file));
    }

    const std::string m_strangers = m_dir.file("a strangers file");
};

TEST_F(SecondLink, ToAStrangersFileInTheNameOfTheShmIsNeverWritten)
{
    makeFileInWalModeWithLog();
    fs::remove(beside("-shm"));
    setContents(m_strangers, std::string(40000, 'x'));
    fs::create_hard_link(m_strangers, beside("-shm"));
    expectRead();  // SQLite does without an index that it may not write
    EXPECT_EQ(contents(m_strangers), std::string(40000, 'x'));
}

TEST_F(SecondLink, MadeUnderAnOpenReaderIsNotWrittenEither)
{
    makeGenerations(m_file, "DELETE");
    expectRead();
    runSql(m_file, "PRAGMA journal_mode=WAL");
    setContents(m_strangers, std::string(40000, 'x'));
    fs::create_hard_link(m_strangers, beside("-shm"));
    expectFailure(CANNOT_OPEN);
    EXPECT_EQ(contents(m_strangers), std::string(40000, 'x'));
}

TEST_F(SecondLink, ToTheShmItselfLeavesTheFileReadable)
{
    makeFileInWalModeWithLog();
    OpenFile other(m_file);  // somebody has the log in use: its index holds
    other.run("SELECT count(*) FROM descriptions");
    fs::create_hard_link(beside("-shm"), m_strangers);
    const std::string index = contents(m_strangers);
    expectRead();
    EXPECT_EQ(contents(m_strangers), index);
}

/// Where rolling back could only begin.
class UnfinishableRollback : public Companions {
protected:
    void SetUp() override
    {
        Companions::SetUp();
        makeGenerations(m_file, "DELETE");
        ASSERT_TRUE(killWriter(m_file));
    }
};

TEST_F(UnfinishableRollback, IsNotBegunWhereTheFolderCannotBeWritten)
{
    const std::string before = contents(m_file);
    fs::permissions(m_dir.path(), fs::perms::owner_read | fs::perms::owner_exec);
    {
        const WithoutRootRights restricted;
        expectFailure(READ_ONLY);
        expectFailure(READ_ONLY);
    }
    fs::permissions(m_dir.path(), fs::perms::owner_all);
    EXPECT_EQ(contents(m_file), before);
    EXPECT_TRUE(fs::exists(beside("-journal")));
}

int g_deletions = 0;

/// Stands for a journal that cannot be removed though its folder can be written.
int refuseToDelete(sqlite3_vfs* /*vfs*/, const char* /*name*/, int /*syncFolder*/)
{
    ++g_deletions;
    return SQLITE_IOERR_DELETE;
}

TEST_F(UnfinishableRollback, IsTriedOncePerJournal)
{
    sqlite3_vfs* const system = sqlite3_vfs_find(nullptr);
    sqlite3_vfs refusing = *system;
    refusing.zName = "refusing";
    refusing.xDelete = refuseToDelete;
    sqlite3_vfs_register(&refusing, 1);
    for (int i = 0; i < 3; ++i) {
        expectFailure(READ_ONLY);
    }
    EXPECT_EQ(g_deletions, 1);
    ASSERT_EQ(m_db.closeDb(), 0);
    sqlite3_vfs_unregister(&refusing);
    sqlite3_vfs_register(system, 1);
    expectRead();
}

/// Takes the lock of a reader on a database file, as SQLite's documentation of its file locking
/// describes it.
void lockAsReader(const std::string& file, const ChildProcess::Signal& signal)
{
    const int descriptor = open(file.c_str(), O_RDWR | O_CLOEXEC);
    struct flock lock = {};
    lock.l_type = F_RDLCK;
    lock.l_whence = SEEK_SET;
    lock.l_start = 0x40000002;
    lock.l_len = 510;
    if (fcntl(descriptor, F_SETLK, &lock) == 0) {
        signal();
    }
    pause();
}

TEST_F(UnfinishableRollback, BecauseOfAReaderIsSaidToBeLockedAndWaitedForOnce)
{
    ChildProcess reader(
        [this](const ChildProcess::Signal& signal) { lockAsReader(m_file, signal); });
    ASSERT_TRUE(reader.waitForSignal());
    const auto start = std::chrono::steady_clock::now();
    expectFailure(failedQuery("database is locked Err=5"));
    // One patience of 5 s for the opening and the query: two would be no less than 10 s.
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(9));
    reader.kill();
    expectRead();
}

}  // namespace
