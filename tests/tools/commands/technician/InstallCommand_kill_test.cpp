// zav install, killed before each of its system calls that changes a file.

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <algorithm>
#include <filesystem>

#include "support/SyscallTracer.h"
#include "support/database.h"
#include "tools/ZavCommand.h"

namespace {

namespace fs = std::filesystem;

const std::string OLD = "old";
const std::string NEW = "new";

/// A sound database of several pages, whose texts all are one word.
std::string textsOf(const std::string& word)
{
    std::string sql =
        "INSERT INTO fault_type_definition VALUES(1,'E1','error',0,0),(2,'E2','error',0,0),"
        "(3,'E3','error',0,0);";
    for (const char* code : {"1", "2", "3"}) {
        sql += std::string(
                   "INSERT INTO descriptions(id_fault_type,id_language,name,description,"
                   "remedy) VALUES(") +
               code + ",1,'" + word + "','" + std::string(2500, 'x') + "','" + word + "');";
    }
    return sql;
}

/// Leaves a file as a writer does that dies in the middle of a transaction: its changes are on the
/// disk and have to be taken back.
void dieWriting(const std::string& file)
{
    const fs::path folder = fs::path(file).parent_path();
    const fs::path aside = folder.string() + "-aside";
    {
        OpenFile writer(file);
        writer.run(
            "PRAGMA cache_size=1; PRAGMA cache_spill=1; BEGIN IMMEDIATE;"
            "UPDATE descriptions SET name='half', description=hex(zeroblob(3000))");
        fs::copy(folder, aside);
    }
    fs::remove_all(folder);
    fs::rename(aside, folder);
}

void makeOld(const std::string& file, const std::string& mode = "DELETE")
{
    makeDatabase(file, textsOf(OLD));
    runSql(file, "PRAGMA journal_mode=" + mode);
}

/// A state in which the file that is replaced may be.
struct Situation {
    const char* name;
    void (*make)(const std::string& file);
    std::string before;  ///< what the file is then
};

/// Or GoogleTest would print its bytes, padding included.
void PrintTo(const Situation& situation, std::ostream* stream)
{
    *stream << situation.name;
}

const Situation SITUATIONS[] = {
    {"NoOldFile", [](const std::string&) {}, "missing"},
    {"AnOldFile", [](const std::string& file) { makeOld(file); }, OLD},
    {"AnEmptyOldFile", [](const std::string& file) { setContents(file, ""); }, "unreadable"},
    {"ADamagedOldFile", [](const std::string& file) { setContents(file, std::string(5000, 'x')); },
     "unreadable"},
    {"AWriterThatDied",
     [](const std::string& file) {
         makeOld(file);
         dieWriting(file);
     },
     OLD},
    {"ADamagedFileOfAWriterThatDied",
     [](const std::string& file) {
         makeOld(file);
         dieWriting(file);
         setContents(file, "no database");
     },
     "unreadable"},
    {"AJournalThatIsKept",
     [](const std::string& file) {
         OpenFile writer(file);
         writer.run("PRAGMA journal_mode=PERSIST;" + schemaSql() + textsOf(OLD));
     },
     OLD},
    {"AJournalWithoutItsFile",
     [](const std::string& file) {
         makeOld(file);
         dieWriting(file);
         fs::remove(file);
     },
     "missing"},
    {"WalMode", [](const std::string& file) { makeOld(file, "WAL"); }, OLD},
    {"AWriterThatDiedInWalMode",
     [](const std::string& file) {
         makeOld(file, "WAL");
         dieWriting(file);
     },
     OLD},
    {"AWalBesideAFileWithoutWalMode",
     [](const std::string& file) {
         makeOld(file, "WAL");
         dieWriting(file);
         const std::string wal = contents(file + "-wal");
         fs::remove(file + "-wal");
         fs::remove(file + "-shm");
         runSql(file, "PRAGMA journal_mode=DELETE");
         setContents(file + "-wal", wal);
     },
     OLD},
};

std::string firstCell(sqlite3* db, const std::string& sql)
{
    sqlite3_stmt* statement = nullptr;
    std::string cell = "unreadable";
    if (sqlite3_prepare_v2(db, sql.c_str(), -1, &statement, nullptr) == SQLITE_OK &&
        sqlite3_step(statement) == SQLITE_ROW) {
        const unsigned char* text = sqlite3_column_text(statement, 0);
        cell = text == nullptr ? "empty" : reinterpret_cast<const char*>(text);
    }
    sqlite3_finalize(statement);
    return cell;
}

/// What the next program finds that opens the file, and may write: it applies whatever journal
/// lies beside it.
std::string stateOf(const std::string& file)
{
    if (!fs::exists(file)) {
        return "missing";
    }
    sqlite3* db = nullptr;
    sqlite3_open_v2(file.c_str(), &db, SQLITE_OPEN_READWRITE, nullptr);
    std::string state =
        firstCell(db, "SELECT group_concat(DISTINCT name || remedy) FROM descriptions");
    if (state != "unreadable" && firstCell(db, "PRAGMA integrity_check") != "ok") {
        state = "damaged";
    }
    sqlite3_close(db);
    return state == OLD + OLD ? OLD : state == NEW + NEW ? NEW : state;
}

std::vector<std::string> filesIn(const std::string& folder)
{
    std::vector<std::string> names;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
        names.push_back(entry.path().filename().string());
    }
    return names;
}

class KilledInstall : public testing::TestWithParam<Situation> {
protected:
    void SetUp() override
    {
        if (!canTraceSyscalls()) {
            GTEST_SKIP() << "system calls cannot be traced in an emulator";
        }
        makeDatabase(m_new, textsOf(NEW));
        fs::create_directory(m_made);
        GetParam().make(m_made + "/faults.db");
    }

    /// Brings the folder of the target into the situation again.
    void reset() const
    {
        fs::remove_all(m_folder);
        fs::copy(m_made, m_folder);
    }

    /// On a copy, since looking changes things.
    std::string stateNow() const
    {
        const std::string copy = m_folder + "-copy";
        fs::remove_all(copy);
        fs::copy(m_folder, copy);
        return stateOf(copy + "/faults.db");
    }

    TracedRun install(std::size_t killBefore) const
    {
        return runTraced({ZavCommand::program(), "install", m_new, m_target}, killBefore);
    }

    ZavCommand m_zav;
    const std::string m_new = m_zav.file("new.db");
    const std::string m_made = m_zav.file("made");
    const std::string m_folder = m_zav.file("data");
    const std::string m_target = m_folder + "/faults.db";
};

TEST_P(KilledInstall, LeavesTheOldFileOrTheNewOne)
{
    reset();
    ASSERT_EQ(stateNow(), GetParam().before);
    const TracedRun whole = install(NEVER);
    ASSERT_EQ(whole.exitStatus, 0);
    ASSERT_EQ(stateNow(), NEW);
    ASSERT_EQ(filesIn(m_folder), std::vector<std::string>{"faults.db"});
    ASSERT_GT(whole.calls.size(), 8U);

    const auto renamed =
        std::find(whole.calls.begin(), whole.calls.end(), "rename faults.db.zav-new faults.db");
    ASSERT_NE(renamed, whole.calls.end());
    for (std::size_t i = 0; i < whole.calls.size(); ++i) {
        reset();
        ASSERT_EQ(install(i).exitStatus, -1) << whole.calls[i];
        const bool isRenamed = i > static_cast<std::size_t>(renamed - whole.calls.begin());
        EXPECT_EQ(stateNow(), isRenamed ? NEW : GetParam().before)
            << "killed before " << whole.calls[i];

        EXPECT_EQ(install(NEVER).exitStatus, 0) << "after it was killed before " << whole.calls[i];
        EXPECT_EQ(stateNow(), NEW);
        EXPECT_EQ(filesIn(m_folder), std::vector<std::string>{"faults.db"})
            << "after it was killed before " << whole.calls[i];
    }
}

std::string nameOf(const testing::TestParamInfo<Situation>& tested)
{
    return tested.param.name;
}

INSTANTIATE_TEST_SUITE_P(With, KilledInstall, testing::ValuesIn(SITUATIONS), nameOf);

/// What is on the disk before the power may go is not seen by killing: only by the order.
TEST(InstallOrder, FlushesTheFileAndTheFolderBeforeItRenamesAndTheFolderAfterwards)
{
    if (!canTraceSyscalls()) {
        GTEST_SKIP() << "system calls cannot be traced in an emulator";
    }
    const ZavCommand zav;
    const std::string fresh = makeDatabase(zav.file("new.db"), textsOf(NEW));
    fs::create_directory(zav.file("data"));
    const std::string target = zav.file("data/faults.db");
    makeOld(target);
    std::vector<std::string> calls =
        runTraced({ZavCommand::program(), "install", fresh, target}, NEVER).calls;
    const auto isOfNoFile = [](const std::string& call) {
        return call.rfind("write pipe", 0) == 0 || call.rfind("write null", 0) == 0;
    };
    calls.erase(std::remove_if(calls.begin(), calls.end(), isOfNoFile), calls.end());
    EXPECT_EQ(calls, (std::vector<std::string>{
                         "create faults.db.zav-new",
                         "unlink faults.db.zav-new-journal",
                         "unlink faults.db.zav-new-wal",
                         "unlink faults.db.zav-new-shm",
                         "ftruncate faults.db.zav-new",
                         "write faults.db.zav-new",
                         "fsync faults.db.zav-new",
                         "unlink faults.db-journal",
                         "unlink faults.db-wal",
                         "unlink faults.db-shm",
                         "fchown faults.db.zav-new",
                         "fchmod faults.db.zav-new",
                         "fsync faults.db.zav-new",
                         "fsync data",
                         "rename faults.db.zav-new faults.db",
                         "fsync data",
                     }));
}

}  // namespace
