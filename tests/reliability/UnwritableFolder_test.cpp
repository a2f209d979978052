// Where neither the file nor its folder can be written: for want of permission (as root, the right
// to pass over permissions is laid down first), or on a read-only medium.

#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mount.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <set>
#include <string>

#include "support/CoutCapture.h"
#include "support/TempDir.h"
#include "support/WithoutRootRights.h"
#include "support/generations.h"
#include "zav/Sqlite3Db.h"

namespace {

namespace fs = std::filesystem;

constexpr const char* READ_ONLY =
    "[ERROR] SQL3::getTbl() Sql Query failed: attempt to write a readonly database Err=8\n";

class UnwritableFolder : public testing::Test {
protected:
    void TearDown() override { fs::permissions(m_dir.path(), fs::perms::owner_all); }

    void makeUnwritable()
    {
        for (const auto& entry : fs::directory_iterator(m_dir.path())) {
            fs::permissions(entry.path(), fs::perms::owner_read);
        }
        fs::permissions(m_dir.path(), fs::perms::owner_read | fs::perms::owner_exec);
    }

    /// Opens the file and reads it.
    Generations read()
    {
        const WithoutRootRights restricted;
        EXPECT_EQ(m_db.openDb(m_file, true), 0);
        const CoutCapture output;
        Generations generations = readGenerations(m_db);
        m_lines = output.text();
        return generations;
    }

    TempDir m_dir;
    const std::string m_file = m_dir.file("faults.db");
    Sqlite3Db m_db{0};
    std::string m_lines;
};

TEST_F(UnwritableFolder, FileIsRead)
{
    makeGenerations(m_file, "DELETE");
    makeUnwritable();
    EXPECT_EQ(read().result, 1000);
    EXPECT_EQ(m_lines, "");
}

TEST_F(UnwritableFolder, JournalOfAKilledWriterFailsTheQueries)
{
    makeGenerations(m_file, "DELETE");
    ASSERT_TRUE(killWriter(m_file));
    makeUnwritable();
    EXPECT_EQ(read().result, -2);
    EXPECT_EQ(m_lines, READ_ONLY);
    EXPECT_TRUE(fs::exists(m_file + "-journal"));
}

TEST_F(UnwritableFolder, FileInWalModeFailsTheQueriesWithoutItsCompanions)
{
    makeGenerations(m_file, "WAL");
    ASSERT_FALSE(fs::exists(m_file + "-wal"));
    makeUnwritable();
    EXPECT_EQ(read().result, -2);
    EXPECT_EQ(m_lines, READ_ONLY);
}

TEST_F(UnwritableFolder, FileInWalModeIsReadWithItsCompanions)
{
    makeGenerations(m_file, "WAL");
    ASSERT_TRUE(killWriter(m_file));
    makeUnwritable();
    const Generations generations = read();
    EXPECT_EQ(generations.result, 1000);
    EXPECT_EQ(generations.texts, std::set<std::string>{"0"});
    EXPECT_EQ(m_lines, "");
}

/// While it lives, this process sees a folder as on a read-only medium.
class ReadOnlyMount {
public:
    explicit ReadOnlyMount(const std::string& folder) : m_folder(folder)
    {
        const char* path = m_folder.c_str();
        m_isMounted = unshare(CLONE_NEWNS) == 0 &&
                      mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
                      mount(path, path, nullptr, MS_BIND, nullptr) == 0;
        m_isReadOnly = m_isMounted &&
                       mount(path, path, nullptr, MS_REMOUNT | MS_BIND | MS_RDONLY, nullptr) == 0;
        m_error = errno;
    }
    ~ReadOnlyMount()
    {
        if (m_isMounted) {
            umount2(m_folder.c_str(), MNT_DETACH);
        }
    }
    ReadOnlyMount(const ReadOnlyMount&) = delete;
    ReadOnlyMount& operator=(const ReadOnlyMount&) = delete;

    bool isReadOnly() const { return m_isReadOnly; }
    const char* errorText() const { return std::strerror(m_error); }

private:
    std::string m_folder;
    bool m_isMounted = false;
    bool m_isReadOnly = false;
    int m_error = 0;
};

TEST_F(UnwritableFolder, ReadOnlyMediumIsReadExceptInWalModeWithoutItsCompanions)
{
    makeGenerations(m_file, "DELETE");
    makeGenerations(m_dir.file("wal.db"), "WAL");
    const ReadOnlyMount medium(m_dir.path());
    if (!medium.isReadOnly()) {
        GTEST_SKIP() << "no read-only mount for this user: " << medium.errorText();
    }
    EXPECT_EQ(read().result, 1000);
    EXPECT_EQ(m_lines, "");
    ASSERT_EQ(m_db.closeDb(), 0);

    ASSERT_EQ(m_db.openDb(m_dir.file("wal.db"), true), 0);
    const CoutCapture output;
    EXPECT_EQ(readGenerations(m_db).result, -2);
    EXPECT_EQ(output.text(),
              "[ERROR] SQL3::getTbl() Sql Query failed: unable to open database file Err=14\n");
}

}  // namespace
