#include "zav/DescriptionDb.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <climits>
#include <cstdint>
#include <fstream>
#include <string>
#include <system_error>
#include <type_traits>
#include <vector>

#include "support/CoutCapture.h"
#include "support/CoutRedirect.h"
#include "support/FailingLogMutex.h"
#include "support/FailingNew.h"
#include "support/FreshService.h"
#include "support/LockProbe.h"
#include "support/SqlTrace.h"
#include "support/TempDir.h"
#include "support/autoExtension.h"
#include "support/database.h"
#include "support/runProgram.h"

namespace {

class DescriptionDbTest : public testing::Test {
protected:
    /// @return the number of fault types that the service reads now; negative as it returns it.
    int count()
    {
        std::vector<FaultTypeDef> records;
        return m_service->getFaultTypeDefTbl(records);
    }

    const TempDir m_dir;
    const std::string m_file = makeDatabase(
        m_dir.file("faults.db"), "INSERT INTO fault_type_definition(code) VALUES(1), (2)");
    const std::string m_otherFile = makeDatabase(m_dir.file("other.db"));
    const std::string m_missing = m_dir.file("missing.db");
    const FreshService m_service;
};

TEST(DescriptionDb, TypeHasNoBaseAndIsMadeByTheLibraryOnly)
{
    EXPECT_FALSE(std::is_polymorphic<DescriptionDb>::value);
    EXPECT_FALSE(std::is_default_constructible<DescriptionDb>::value);
    EXPECT_FALSE(std::is_copy_constructible<DescriptionDb>::value);
    EXPECT_FALSE(std::is_copy_assignable<DescriptionDb>::value);
    EXPECT_FALSE(std::is_destructible<DescriptionDb>::value);
}

TEST(DescriptionDb, InstanceIsFlagThenTables)
{
    struct Layout {
        bool isOpen;
        ZavSqlFaultTypeDefTbl faultTypeDefTbl;
        ZavSqlDescriptionsTbl descriptionsTbl;
    };
    EXPECT_EQ(sizeof(DescriptionDb), sizeof(Layout));
}

TEST(DescriptionDbProcess, StateAtLoad)
{
    const ProgramResult result = runProgram({ZAV_LIFECYCLE_PROGRAM, "state-at-load"});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.output, "service level 1, connection level 1, closed, instance null\n");
}

TEST(DescriptionDbProcess, ConnectionIsMadeWithTheLevelOfTheServiceAtLoad)
{
    const ProgramResult result = runProgram({ZAV_INITIAL_LEVEL_PROGRAM});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.output, "service level 7, connection level 7\n");
}

TEST(DescriptionDbProcess, NothingIsWrittenBeforeTheFirstOpening)
{
    const ProgramResult result = runProgram({ZAV_LIFECYCLE_PROGRAM, "everything-but-open"});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.output, "");
}

TEST(DescriptionDbProcess, ProcessWithoutAnInstanceEndsQuietly)
{
    const ProgramResult result = runProgram({ZAV_LIFECYCLE_PROGRAM, "nothing"});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.output, "main ends\n");
}

TEST_F(DescriptionDbTest, AtExitTheInstanceGoesBeforeTheConnection)
{
    const ProgramResult result = runProgram({ZAV_LIFECYCLE_PROGRAM, "open", m_file});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.output,
              "[DEBUG] ZAV::openDb() OK\n"
              "instance destroyed\n"
              "connection is still open\n"
              "connection closes, instance pointer kept\n");
}

TEST_F(DescriptionDbTest, GetInstanceReturnsTheSamePointerOnEachCall)
{
    const CoutCapture capture;
    EXPECT_EQ(DescriptionDb::m_pInstance, nullptr);
    DescriptionDb* const first = DescriptionDb::getInstance();
    EXPECT_NE(first, nullptr);
    EXPECT_EQ(DescriptionDb::m_pInstance, first);
    EXPECT_EQ(DescriptionDb::getInstance(), first);
    EXPECT_EQ(m_service->openDb(m_file, true), 0);
    EXPECT_EQ(DescriptionDb::getInstance(), first);
    EXPECT_EQ(m_service->closeDb(), 0);
    EXPECT_EQ(DescriptionDb::getInstance(), first);
}

TEST_F(DescriptionDbTest, MakingTheInstanceWritesNothingAndLeavesTheConnectionAlone)
{
    const SqlTrace trace;
    const CoutCapture capture;
    DescriptionDb::sqliteDb.m_dbgLevel = 7;
    DescriptionDb::m_Debug = 5;
    DescriptionDb::getInstance();
    EXPECT_EQ(DescriptionDb::sqliteDb.m_dbgLevel, 7U);
    EXPECT_EQ(DescriptionDb::sqliteDb.m_dbState, 0);
    EXPECT_EQ(trace.opened(), 0);
    EXPECT_EQ(capture.text(), "");
}

TEST_F(DescriptionDbTest, InstanceThatCannotBeMadeLeavesThePointerNull)
{
    bool isAlwaysNull = true;
    const int exceptions = failEachAllocation(
        [] { DescriptionDb::getInstance(); },
        [&] { isAlwaysNull = isAlwaysNull && DescriptionDb::m_pInstance == nullptr; });
    EXPECT_GT(exceptions, 3);  // the instance, both names, both column lists
    EXPECT_TRUE(isAlwaysNull);
    EXPECT_NE(DescriptionDb::m_pInstance, nullptr);
    EXPECT_EQ(DescriptionDb::getInstance(), DescriptionDb::m_pInstance);
}

TEST_F(DescriptionDbTest, AtItsDefaultLevelASuccessfulOpeningWritesOneLine)
{
    const CoutCapture capture;
    EXPECT_EQ(m_service->openDb(m_file, true), 0);
    EXPECT_EQ(capture.text(), "[DEBUG] ZAV::openDb() OK\n");
    EXPECT_EQ(m_service->closeDb(), 0);
    EXPECT_EQ(capture.text(), "[DEBUG] ZAV::openDb() OK\n");
}

TEST_F(DescriptionDbTest, LevelsOfTheLines)
{
    const std::string ok = "[DEBUG] ZAV::openDb() OK\n";
    const auto pathLine = [](const std::string& path) {
        return "[DEBUG] ZAV::openDb() " + path + "\n";
    };
    const auto errorLine = [](const std::string& path) {
        return "[ERROR] ZAV::openDb() FAiled to open=" + path + "\n";
    };
    for (const int level : {INT_MIN, -1, 0, 1, 2, 3, INT_MAX}) {
        SCOPED_TRACE(level);
        m_service->setDbgLevel(level);
        {
            const CoutCapture capture;
            EXPECT_EQ(m_service->openDb(m_missing, true), -2);
            EXPECT_EQ(capture.text(),
                      (level >= 2 ? pathLine(m_missing) : "") + errorLine(m_missing));
        }
        {
            const CoutCapture capture;
            EXPECT_EQ(m_service->openDb(m_file, true), 0);
            EXPECT_EQ(count(), 2);
            EXPECT_EQ(m_service->openDb(m_file, true), -1);
            EXPECT_EQ(m_service->closeDb(), 0);
            EXPECT_EQ(m_service->closeDb(), -1);
            EXPECT_EQ(capture.text(),
                      (level >= 2 ? pathLine(m_file) : "") + (level >= 1 ? ok : ""));
        }
    }
}

TEST_F(DescriptionDbTest, LevelIsReadAgainAfterTheOpening)
{
    const auto openWithLevels = [this](int before, OnOpen duringTheOpening) {
        m_service->setDbgLevel(before);
        const CoutCapture capture;
        addAutoExtension(duringTheOpening);
        EXPECT_EQ(m_service->openDb(m_file, true), 0);
        removeAutoExtension(duringTheOpening);
        EXPECT_EQ(m_service->closeDb(), 0);
        return capture.text();
    };
    EXPECT_EQ(openWithLevels(0,
                             [](sqlite3*, char**, const sqlite3_api_routines*) {
                                 DescriptionDb::m_Debug = 1;
                                 return 0;
                             }),
              "[DEBUG] ZAV::openDb() OK\n");
    EXPECT_EQ(openWithLevels(2,
                             [](sqlite3*, char**, const sqlite3_api_routines*) {
                                 DescriptionDb::m_Debug = 0;
                                 return 0;
                             }),
              "[DEBUG] ZAV::openDb() " + m_file + "\n");
}

TEST_F(DescriptionDbTest, PathIsWrittenExactlyAsPassed)
{
    m_service->setDbgLevel(2);
    const std::string paths[] = {"", " two  blanks ", "100%s\n\ttab", "Tür/\xff",
                                 std::string("nul\0inside", 10)};
    for (const std::string& path : paths) {
        const CoutCapture capture;
        EXPECT_EQ(m_service->openDb(path, true), -2);
        EXPECT_EQ(capture.text(), "[DEBUG] ZAV::openDb() " + path + "\n" +
                                      "[ERROR] ZAV::openDb() FAiled to open=" + path + "\n");
    }
}

TEST_F(DescriptionDbTest, LinesAreWrittenAndFlushedUnderTheLogLock)
{
    m_service->setDbgLevel(2);
    LockProbe probe;
    {
        const CoutRedirect redirect(probe);
        EXPECT_EQ(m_service->openDb(m_missing, true), -2);
        EXPECT_EQ(m_service->openDb(m_file, true), 0);
    }
    EXPECT_EQ(probe.flushedText(), "[DEBUG] ZAV::openDb() " + m_missing + "\n" +
                                       "[ERROR] ZAV::openDb() FAiled to open=" + m_missing + "\n" +
                                       "[DEBUG] ZAV::openDb() " + m_file + "\n" +
                                       "[DEBUG] ZAV::openDb() OK\n");
    EXPECT_EQ(probe.flushes(), 4);
    EXPECT_EQ(probe.withoutLock(), 0);
    EXPECT_TRUE(isLogLockFree());
}

TEST_F(DescriptionDbTest, LogLockIsFreeWhileTheFileIsOpened)
{
    static bool isFree;
    isFree = false;
    const OnOpen check = [](sqlite3*, char**, const sqlite3_api_routines*) {
        isFree = isLogLockFree();
        return 0;
    };
    m_service->setDbgLevel(2);
    const CoutCapture capture;
    addAutoExtension(check);
    EXPECT_EQ(m_service->openDb(m_file, true), 0);
    removeAutoExtension(check);
    EXPECT_TRUE(isFree);
}

TEST_F(DescriptionDbTest, LogLockThatFailsPassesWithTheStateReachedSoFar)
{
    const CoutCapture capture;
    m_service->setDbgLevel(2);
    {
        const FailingLogMutex failing;
        EXPECT_THROW(m_service->openDb(m_file, true), std::system_error);
    }
    EXPECT_EQ(DescriptionDb::sqliteDb.m_dbState, 0);  // the path line comes before the opening

    m_service->setDbgLevel(1);
    {
        const FailingLogMutex failing;
        EXPECT_THROW(m_service->openDb(m_missing, true), std::system_error);
        EXPECT_THROW(m_service->openDb(m_file, true), std::system_error);
    }
    EXPECT_EQ(capture.text(), "");
    EXPECT_EQ(m_service->openDb(m_file, true), -1);  // the "OK" line comes after it
    EXPECT_EQ(count(), 2);
    EXPECT_EQ(m_service->closeDb(), 0);
}

TEST_F(DescriptionDbTest, OpensReadOnlyWhateverTheFlag)
{
    for (const bool flag : {true, false}) {
        const CoutCapture capture;
        EXPECT_EQ(m_service->openDb(m_missing, flag), -2);
        EXPECT_EQ(m_service->openDb(m_file, flag), 0);
        EXPECT_TRUE(DescriptionDb::sqliteDb.isReadOnly());
        EXPECT_EQ(count(), 2);
        EXPECT_EQ(m_service->openDb(m_otherFile, flag), -1);
        EXPECT_EQ(m_service->closeDb(), 0);
        EXPECT_EQ(capture.text(), "[ERROR] ZAV::openDb() FAiled to open=" + m_missing +
                                      "\n[DEBUG] ZAV::openDb() OK\n");
        EXPECT_FALSE(std::ifstream(m_missing).is_open());
    }
}

TEST_F(DescriptionDbTest, SecondOpeningIsRefusedSilentlyAndLeavesTheFirstInUse)
{
    m_service->setDbgLevel(2);
    const SqlTrace trace;
    const CoutCapture before;
    ASSERT_EQ(m_service->openDb(m_file, true), 0);

    const CoutCapture capture;
    for (const std::string& path : {m_file, m_otherFile, m_missing}) {
        EXPECT_EQ(m_service->openDb(path, true), -1);
    }
    EXPECT_EQ(capture.text(), "");
    EXPECT_EQ(trace.opened(), 1);
    EXPECT_EQ(DescriptionDb::sqliteDb.path(), m_file);
    EXPECT_EQ(DescriptionDb::sqliteDb.lastCode(), 0);
    EXPECT_EQ(count(), 2);
}

TEST_F(DescriptionDbTest, FailedOpeningLeavesTheServiceClosedForTheNext)
{
    const CoutCapture capture;
    EXPECT_EQ(m_service->openDb(m_missing, true), -2);
    EXPECT_EQ(m_service->closeDb(), -1);
    EXPECT_EQ(count(), -1);
    EXPECT_EQ(m_service->openDb(m_file, true), 0);
    EXPECT_EQ(count(), 2);
}

TEST_F(DescriptionDbTest, OpeningFailsWhereTheConnectionIsOpenAlready)
{
    ASSERT_EQ(DescriptionDb::sqliteDb.openDb(m_file, true), 0);
    const CoutCapture capture;
    EXPECT_EQ(m_service->openDb(m_file, true), -2);
    EXPECT_EQ(capture.text(), "[ERROR] ZAV::openDb() FAiled to open=" + m_file + "\n");
    EXPECT_EQ(m_service->closeDb(), -1);
    EXPECT_EQ(count(), 2);  // the queries ask the connection, not the service
}

TEST_F(DescriptionDbTest, ClosingIsSilentAndRefusedWhenNothingIsOpen)
{
    m_service->setDbgLevel(2);
    const CoutCapture capture;
    EXPECT_EQ(m_service->closeDb(), -1);
    EXPECT_EQ(capture.text(), "");
}

TEST_F(DescriptionDbTest, ClosedServiceOpensAgain)
{
    const CoutCapture capture;
    EXPECT_EQ(m_service->openDb(m_file, true), 0);
    EXPECT_EQ(m_service->closeDb(), 0);
    EXPECT_EQ(m_service->closeDb(), -1);
    EXPECT_EQ(count(), -1);
    EXPECT_EQ(m_service->openDb(m_otherFile, true), 0);
    EXPECT_EQ(count(), 0);
    EXPECT_EQ(m_service->closeDb(), 0);
}

TEST_F(DescriptionDbTest, CloseThatFailsIsSilentAndLeavesTheServiceOpen)
{
    m_service->setDbgLevel(0);
    const SqlTrace trace;
    ASSERT_EQ(m_service->openDb(m_file, true), 0);
    sqlite3_stmt* statement = nullptr;
    ASSERT_EQ(sqlite3_prepare_v2(trace.connection(), "SELECT 1", -1, &statement, nullptr), 0);

    const CoutCapture capture;
    EXPECT_EQ(m_service->closeDb(), -1);
    EXPECT_EQ(m_service->closeDb(), -1);
    EXPECT_EQ(m_service->openDb(m_otherFile, true), -1);
    EXPECT_EQ(count(), 2);
    sqlite3_finalize(statement);
    EXPECT_EQ(m_service->closeDb(), 0);
    EXPECT_EQ(m_service->closeDb(), -1);
    EXPECT_EQ(count(), -1);
    EXPECT_EQ(capture.text(), "");
}

TEST_F(DescriptionDbTest, CloseFailsWhereTheConnectionWasClosedBeneath)
{
    const CoutCapture capture;
    ASSERT_EQ(m_service->openDb(m_file, true), 0);
    ASSERT_EQ(DescriptionDb::sqliteDb.closeDb(), 0);
    EXPECT_EQ(m_service->closeDb(), -1);
    EXPECT_EQ(m_service->openDb(m_file, true), -1);  // still open to the service
    EXPECT_EQ(count(), -1);
    ASSERT_EQ(DescriptionDb::sqliteDb.openDb(m_file, true), 0);
    EXPECT_EQ(m_service->closeDb(), 0);
}

TEST_F(DescriptionDbTest, LevelIsStoredAndReachesTheConnectionOnlyAsOne)
{
    const struct {
        int level;
        std::uint32_t connectionLevel;  // 7 before
    } cases[] = {{INT_MIN, 7}, {-1, 7}, {0, 7}, {1, 7}, {2, 1}, {3, 1}, {INT_MAX, 1}};
    const CoutCapture capture;
    for (const auto& [level, connectionLevel] : cases) {
        DescriptionDb::sqliteDb.m_dbgLevel = 7;
        m_service->setDbgLevel(level);
        EXPECT_EQ(DescriptionDb::m_Debug, level);
        EXPECT_EQ(DescriptionDb::sqliteDb.m_dbgLevel, connectionLevel) << level;
    }
    EXPECT_EQ(capture.text(), "");
}

TEST_F(DescriptionDbTest, LevelOfTheConnectionIsRaisedFromZeroAndNotLoweredAgain)
{
    DescriptionDb::sqliteDb.m_dbgLevel = 0;
    m_service->setDbgLevel(5);
    EXPECT_EQ(DescriptionDb::m_Debug, 5);
    EXPECT_EQ(DescriptionDb::sqliteDb.m_dbgLevel, 1U);
    m_service->setDbgLevel(0);
    EXPECT_EQ(DescriptionDb::m_Debug, 0);
    EXPECT_EQ(DescriptionDb::sqliteDb.m_dbgLevel, 1U);
}

TEST_F(DescriptionDbTest, LevelMayBeSetWhileOpen)
{
    const CoutCapture capture;
    ASSERT_EQ(m_service->openDb(m_file, true), 0);
    m_service->setDbgLevel(2);
    EXPECT_EQ(count(), 2);
    EXPECT_EQ(m_service->closeDb(), 0);
    EXPECT_EQ(m_service->openDb(m_file, true), 0);
    EXPECT_EQ(capture.text(), "[DEBUG] ZAV::openDb() OK\n[DEBUG] ZAV::openDb() " + m_file +
                                  "\n[DEBUG] ZAV::openDb() OK\n");
}

TEST_F(DescriptionDbTest, ConnectionWritesItsQueryLineOnlyByItsOwnLevel)
{
    m_service->setDbgLevel(INT_MAX);
    {
        const CoutCapture capture;
        ASSERT_EQ(m_service->openDb(m_file, true), 0);
    }
    const CoutCapture capture;
    EXPECT_EQ(count(), 2);
    EXPECT_EQ(capture.text(), "");
    DescriptionDb::sqliteDb.m_dbgLevel = 2;
    EXPECT_EQ(count(), 2);
    EXPECT_EQ(capture.text(), "[DEBUG] SQL3::getTbl() Done\n");
}

TEST_F(DescriptionDbTest, ApplicationUsesAConnectionOfItsOwnBesideTheService)
{
    m_service->setDbgLevel(0);
    Sqlite3Db own(0);
    ASSERT_EQ(m_service->openDb(m_file, true), 0);
    ASSERT_EQ(own.openDb(m_otherFile, false), 0);
    ZavSqlFaultTypeDefTbl table("fault_type_definition");
    std::vector<FaultTypeDef> records;
    EXPECT_EQ(own.getTbl("SELECT * FROM fault_type_definition", records, &table), 0);
    EXPECT_EQ(count(), 2);
    EXPECT_EQ(m_service->closeDb(), 0);
    EXPECT_EQ(own.getTbl("SELECT * FROM fault_type_definition", records, &table), 0);
    EXPECT_EQ(own.closeDb(), 0);
}

}  // namespace
