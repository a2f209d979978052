#include <gtest/gtest.h>
#include <sqlite3.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <map>
#include <optional>

#include "support/ChildProcess.h"
#include "support/database.h"
#include "tools/ZavCommand.h"

namespace {

namespace fs = std::filesystem;

std::string textsOf(const std::string& word)
{
    return "INSERT INTO fault_type_definition VALUES(1,'" + word +
           "','error',0,0);"
           "INSERT INTO descriptions VALUES(1,1,1,'" +
           word + "','','" + word + "','','')";
}

/// A folder "data" with a file that is to be replaced, and a new file beside the folder.
class Install : public testing::Test {
protected:
    void SetUp() override
    {
        fs::create_directory(m_folder);
        makeDatabase(m_target, textsOf("old"));
        makeDatabase(m_new, textsOf("new"));
    }

    CommandResult install(const std::string& options = "") const
    {
        return m_zav.run("install " + m_new + " " + m_target + " " + options);
    }

    std::string installedAlias() const
    {
        return m_zav
            .shell("sqlite3 -readonly " + m_target + " 'SELECT alias FROM fault_type_definition'")
            .output;
    }

    /// All files of the folder, with what they hold.
    std::map<std::string, std::string> filesInFolder() const
    {
        std::map<std::string, std::string> files;
        for (const fs::directory_entry& entry : fs::directory_iterator(m_folder)) {
            files[entry.path().filename().string()] = contents(entry.path().string());
        }
        return files;
    }

    /// @param reason  as it stands after "not installed: ".
    void expectRefusal(const CommandResult& result, int status, const std::string& reason) const
    {
        EXPECT_EQ(result.output, "");
        EXPECT_EQ(result.errors, "zav: not installed: " + reason + "\n");
        EXPECT_EQ(result.status, status) << reason;
    }

    ZavCommand m_zav;
    const std::string m_folder = m_zav.file("data");
    const std::string m_target = m_folder + "/faults.db";
    const std::string m_new = m_zav.file("new.db");
};

TEST_F(Install, SaysWhatItHasReplacedByWhat)
{
    runSql(m_target, "PRAGMA user_version=3");
    runSql(m_new, "PRAGMA user_version=4");
    const CommandResult result = install();
    EXPECT_EQ(result.errors, "");
    EXPECT_EQ(result.status, 0);
    const std::string content = result.output.substr(result.output.find("content"));
    EXPECT_EQ(result.output.substr(0, result.output.find("content")), "file          " + m_target +
                                                                          "\n"
                                                                          "release       3 -> 4\n");
    EXPECT_EQ(content.substr(content.find("fault types")),
              "fault types   1 -> 1\n"
              "texts         1 -> 1\n"
              "journal mode  delete -> delete\n"
              "size          20480 bytes -> 20480 bytes\n"
              "written by    SQLite " SQLITE_VERSION " -> SQLite " SQLITE_VERSION "\n");
    EXPECT_EQ(installedAlias(), "new\n");
}

TEST_F(Install, SaysItInJson)
{
    fs::copy_file(m_target, m_zav.file("old.db"));
    const CommandResult result = install("--format json");
    const std::string script =
        "python3 -c 'import json, sys; said = json.load(open(\"said\"));"
        "infos = json.load(sys.stdin); [info.pop(\"file\") for info in infos];"
        "print(said[\"file\"], [said[\"old\"], said[\"new\"]] == infos)'";
    setContents(m_zav.file("said"), result.output);
    EXPECT_EQ(
        m_zav.shell("cd " + m_zav.file("") + "; zav info --format json old.db new.db | " + script)
            .output,
        m_target + " True\n");
}

TEST_F(Install, MakesAFileWhereThereIsNone)
{
    fs::remove(m_target);
    const CommandResult result = m_zav.shell("umask 077; zav install " + m_new + " " + m_target);
    EXPECT_EQ(result.output.substr(result.output.find("fault types")),
              "fault types   none -> 1\n"
              "texts         none -> 1\n"
              "journal mode  none -> delete\n"
              "size          none -> 20480 bytes\n"
              "written by    none -> SQLite " SQLITE_VERSION "\n");
    EXPECT_EQ(installedAlias(), "new\n");
    EXPECT_EQ(fs::status(m_target).permissions(), fs::perms(0644));
}

TEST_F(Install, KeepsOwnerAndMode)
{
    constexpr uid_t OWNER = 1234;
    constexpr gid_t GROUP = 4321;
    if (geteuid() == 0) {
        ASSERT_EQ(chown(m_target.c_str(), OWNER, GROUP), 0);
    }
    fs::permissions(m_target, fs::perms(0640));
    struct stat before = {};
    stat(m_target.c_str(), &before);
    EXPECT_EQ(install().status, 0);
    struct stat after = {};
    stat(m_target.c_str(), &after);
    EXPECT_EQ(after.st_uid, before.st_uid);
    EXPECT_EQ(after.st_gid, before.st_gid);
    EXPECT_EQ(after.st_mode, before.st_mode);
    EXPECT_NE(after.st_ino, before.st_ino);
}

TEST_F(Install, ReplacesWhatALinkLeadsTo)
{
    const std::string link = m_zav.file("link.db");
    fs::create_symlink("data/faults.db", link);
    EXPECT_EQ(m_zav.run("install " + m_new + " " + link).status, 0);
    EXPECT_TRUE(fs::is_symlink(link));
    EXPECT_EQ(installedAlias(), "new\n");
}

TEST_F(Install, ReplacesWhatIsNoDatabase)
{
    for (const std::string& bytes : {std::string(), std::string(5000, 'x')}) {
        setContents(m_target, bytes);
        const CommandResult result = install();
        EXPECT_NE(result.output.find("\nfault types   unreadable -> 1\n"), std::string::npos);
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(installedAlias(), "new\n");
    }
}

TEST_F(Install, LetsReadersOfTheOldFileGoOn)
{
    OpenFile reader(m_target);
    reader.run("BEGIN; SELECT * FROM descriptions");
    EXPECT_EQ(install().status, 0);
    EXPECT_NO_THROW(
        reader.run("SELECT CASE WHEN alias='old' THEN 1 ELSE abs(-1 << 63) END FROM "
                   "fault_type_definition"));
    EXPECT_EQ(installedAlias(), "new\n");
}

TEST_F(Install, CleansUpAfterAnEarlierAttempt)
{
    for (const char* suffix : {"", "-journal", "-wal", "-shm"}) {
        setContents(m_target + ".zav-new" + suffix, "of an earlier attempt");
    }
    EXPECT_EQ(install("--expect " + std::string(64, '0')).status, 1);
    EXPECT_EQ(filesInFolder().size(), 1U) << "though it refuses the file";
}

TEST_F(Install, SeveralAtOnceDoNotSpoilEachOther)
{
    makeDatabase(m_zav.file("other.db"), textsOf("other"));
    const CommandResult result =
        m_zav.shell("cd " + m_zav.file("") +
                    "; for i in 1 2 3 4 5 6; do"
                    "  zav install new.db data/faults.db >/dev/null || echo failed &"
                    "  zav install other.db data/faults.db >/dev/null || echo failed &"
                    " done; wait");
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.errors, "");
    const auto files = filesInFolder();
    ASSERT_EQ(files.size(), 1U);
    const std::string& bytes = files.at("faults.db");
    EXPECT_TRUE(bytes == contents(m_new) || bytes == contents(m_zav.file("other.db")));
}

TEST_F(Install, RefusesANewFileThatIsNotFit)
{
    struct Case {
        std::string preparation;
        int status;
        std::string reason;
    };
    const std::string& file = m_new;
    const Case cases[] = {
        {"rm new.db", 3, file + ": No such file or directory"},
        {"rm new.db; mkdir new.db", 3, file + ": is no ordinary file"},
        {"rm new.db; mkfifo new.db", 3, file + ": is no ordinary file"},
        {": >new.db", 3, file + ": cannot be read: the file is empty"},
        {"echo 'no database' >new.db", 3, file + ": cannot be read: file is not a database"},
        {"sqlite3 new.db 'PRAGMA journal_mode=WAL' >/dev/null; rm -f new.db-*", 1,
         file + ": is in WAL mode; run PRAGMA journal_mode=DELETE before shipping"},
        {"echo x >new.db-journal", 1,
         file + ": new.db-journal lies beside it; close what has it open, or run VACUUM"},
        {"echo x >new.db-wal", 1,
         file + ": new.db-wal lies beside it; close what has it open, or run VACUUM"},
        {"ln new.db same.db; rm data/faults.db; ln same.db data/faults.db", 3,
         file + " and " + m_target + " are the same file"},
    };
    for (const Case& row : cases) {
        m_zav.shell("cd " + m_zav.file("") + "; rm -rf new.db* same.db");
        makeDatabase(m_new, textsOf("new"));
        const CommandResult preparation =
            m_zav.shell("cd " + m_zav.file("") + "; " + row.preparation);
        ASSERT_EQ(preparation.status, 0) << preparation.errors;
        const auto before = filesInFolder();
        expectRefusal(install(), row.status, row.reason);
        EXPECT_EQ(filesInFolder(), before) << row.preparation;
    }
}

TEST_F(Install, RefusesFindingsFromASeverityOn)
{
    runSql(m_new, "UPDATE fault_type_definition SET alias=char(7)");
    const auto before = filesInFolder();
    const CommandResult refused = install("--fail-on warning");
    EXPECT_EQ(refused.output, "");
    EXPECT_EQ(refused.errors, m_zav.run("check --only control-character " + m_new).output +
                                  "zav: not installed: " + m_new +
                                  ": the findings above refuse it\n");
    EXPECT_EQ(refused.status, 1);
    EXPECT_EQ(filesInFolder(), before);
    EXPECT_EQ(install().status, 0) << "errors alone unless told otherwise";

    runSql(m_new, "UPDATE descriptions SET id_fault_type=2");
    EXPECT_EQ(install().status, 1);
}

TEST_F(Install, RefusesOtherContentThanExpected)
{
    const std::string hash =
        m_zav.shell("zav info --format csv " + m_new + " | sed 1d | cut -d, -f3")
            .output.substr(0, 64);
    const std::string other(64, 'a');
    const auto before = filesInFolder();
    expectRefusal(install("--expect " + other), 1,
                  m_new + ": holds the content " + hash + ", not " + other);
    EXPECT_EQ(filesInFolder(), before);
    EXPECT_EQ(install("--expect " + hash).status, 0);
    EXPECT_EQ(m_zav
                  .shell("zav install " + m_new + " " + m_target + " --expect $(echo " + hash +
                         " | tr a-f A-F)")
                  .status,
              0);
}

TEST_F(Install, RefusesALowerReleaseUnlessItIsAskedFor)
{
    struct Case {
        int oldRelease;
        int newRelease;
        bool isRefused;
    };
    const Case cases[] = {{4, 3, true},  {4, 4, false}, {4, 5, false}, {4, 0, true},
                          {0, 0, false}, {0, 1, false}, {-1, -2, true}};
    for (const Case& row : cases) {
        fs::remove(m_target);
        makeDatabase(m_target, textsOf("old"));
        runSql(m_target, "PRAGMA user_version=" + std::to_string(row.oldRelease));
        runSql(m_new, "PRAGMA user_version=" + std::to_string(row.newRelease));
        if (row.isRefused) {
            const auto before = filesInFolder();
            expectRefusal(install(), 1,
                          m_new + ": has the release number " + std::to_string(row.newRelease) +
                              ", lower than the " + std::to_string(row.oldRelease) + " of " +
                              m_target + "; --downgrade allows it");
            EXPECT_EQ(filesInFolder(), before);
        }
        EXPECT_EQ(install("--downgrade").status, 0);
    }
}

TEST_F(Install, RefusesWhatCannotBeReplaced)
{
    fs::create_symlink("nowhere", m_zav.file("dangling.db"));
    ASSERT_EQ(mkfifo(m_zav.file("fifo").c_str(), 0600), 0);
    struct Case {
        std::string target;
        std::string reason;
    };
    const Case cases[] = {
        {m_folder, m_folder + ": is a folder"},
        {m_zav.file("dangling.db"),
         m_zav.file("dangling.db") + ": is a link that leads to no file"},
        {m_zav.file("fifo"), m_zav.file("fifo") + ": is no ordinary file"},
        {m_zav.file("nowhere/faults.db"),
         m_zav.file("nowhere/faults.db.zav-new") + ": cannot be made: No such file or directory"},
        {m_zav.file(std::string(250, 'x')),
         m_zav.file(std::string(250, 'x')) + ".zav-new: cannot be made: File name too long"},
    };
    for (const Case& row : cases) {
        expectRefusal(m_zav.run("install " + m_new + " " + row.target), 3, row.reason);
    }
}

/// Runs a command as one whom permissions bind, even where the tests run as root.
std::string asAnyone(const std::string& command)
{
    return geteuid() != 0 ? command
                          : "setpriv --bounding-set -dac_override,-dac_read_search " + command;
}

TEST_F(Install, RefusesAFolderThatMayNotBeWrittenTo)
{
    const auto before = filesInFolder();
    fs::permissions(m_folder, fs::perms(0555));
    expectRefusal(m_zav.shell(asAnyone("$ZAV install " + m_new + " " + m_target)), 3,
                  m_target + ".zav-new: cannot be made: Permission denied");
    fs::permissions(m_folder, fs::perms(0755));
    EXPECT_EQ(filesInFolder(), before);
}

TEST_F(Install, RefusesAnOldFileThatMayNotBeWrittenTo)
{
    const auto before = filesInFolder();
    fs::permissions(m_target, fs::perms(0444));
    expectRefusal(m_zav.shell(asAnyone("$ZAV install " + m_new + " " + m_target)), 3,
                  m_target + ": may not be written to");
    EXPECT_EQ(filesInFolder(), before);
}

TEST_F(Install, RefusesWhatDoesNotFitTheDisk)
{
    runSql(m_new, "UPDATE descriptions SET remedy=hex(zeroblob(100000))");
    const auto before = filesInFolder();
    expectRefusal(m_zav.shell("trap '' XFSZ; ulimit -f 100; zav install " + m_new + " " + m_target),
                  3, m_target + ".zav-new: cannot be written: File too large");
    EXPECT_EQ(filesInFolder(), before);

    const std::string script = "mount -t tmpfs -o size=128k none " + m_zav.file("small") +
                               " && cp " + m_target + " " + m_zav.file("small") +
                               " && ! $ZAV install " + m_new + " " + m_zav.file("small/faults.db") +
                               " && ls " + m_zav.file("small");
    fs::create_directory(m_zav.file("small"));
    if (m_zav.shell("unshare -m mount -t tmpfs none " + m_zav.file("small")).status != 0) {
        GTEST_SKIP() << "no file system can be mounted here, to be filled";
    }
    const CommandResult full = m_zav.shell("unshare -m sh -c '" + script + "'");
    EXPECT_EQ(full.errors, "zav: not installed: " + m_zav.file("small/faults.db.zav-new") +
                               ": cannot be written: No space left on device\n");
    EXPECT_EQ(full.output, "faults.db\n");
}

TEST_F(Install, RefusesWhileAWriterIsAtWork)
{
    for (const std::string begin : {"BEGIN IMMEDIATE", "BEGIN EXCLUSIVE"}) {
        ChildProcess writer([&](const ChildProcess::Signal& signal) {
            OpenFile file(m_target);
            file.run(begin + "; UPDATE descriptions SET name='half'");
            signal();
            pause();
        });
        ASSERT_TRUE(writer.waitForSignal());
        const auto before = filesInFolder();
        const CommandResult result = install();
        EXPECT_EQ(result.errors.rfind("zav: not installed: " + m_target + ": is in use", 0), 0U)
            << result.errors;
        EXPECT_EQ(result.status, 3);
        EXPECT_EQ(filesInFolder(), before);
    }
}

TEST_F(Install, WaitsForAWriterThatComesToItsEnd)
{
    ChildProcess writer([&](const ChildProcess::Signal& signal) {
        OpenFile file(m_target);
        file.run("BEGIN IMMEDIATE; UPDATE descriptions SET name='whole'");
        signal();
        sleep(1);
        file.run("COMMIT");
    });
    ASSERT_TRUE(writer.waitForSignal());
    EXPECT_EQ(install().status, 0);
    EXPECT_EQ(filesInFolder().size(), 1U);
    EXPECT_EQ(installedAlias(), "new\n");
}

TEST_F(Install, RefusesAnOldFileInWalModeThatOthersHaveOpen)
{
    runSql(m_target, "PRAGMA journal_mode=WAL");
    ChildProcess reader([&](const ChildProcess::Signal& signal) {
        OpenFile file(m_target);
        file.run("SELECT * FROM descriptions");
        signal();
        pause();
    });
    ASSERT_TRUE(reader.waitForSignal());
    expectRefusal(install(), 3, m_target + ": is in use: database is locked");
    EXPECT_EQ(installedAlias(), "old\n");
    reader.kill();
    EXPECT_EQ(install().status, 0);
    EXPECT_EQ(filesInFolder().size(), 1U);
}

TEST_F(Install, RefusesAJournalThatNamesASuperJournal)
{
    // As SQLite's file format has it: the name, its length, its sum, and eight fixed bytes.
    const std::string journal = contents(m_target).substr(0, 512) + "super" +
                                std::string("\0\0\0\5", 4) + "sum." +
                                "\xd9\xd5\x05\xf9\x20\xa1\x63\xd7";
    for (const bool isThere : {true, false}) {
        if (!isThere) {
            fs::remove(m_target);
        }
        setContents(m_target + "-journal", journal);
        const auto before = filesInFolder();
        expectRefusal(install(), 3,
                      m_target +
                          "-journal: belongs to a transaction on several databases; let its "
                          "program open them first");
        EXPECT_EQ(filesInFolder(), before);
    }
}

}  // namespace
