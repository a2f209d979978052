#include <gtest/gtest.h>
#include <sqlite3.h>

#include <cstdint>
#include <fstream>
#include <iostream>
#include <new>
#include <ostream>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "support/CoutCapture.h"
#include "support/CoutRedirect.h"
#include "support/FailingLogMutex.h"
#include "support/FailingNew.h"
#include "support/LockProbe.h"
#include "support/SqlTrace.h"
#include "support/TempDir.h"
#include "support/database.h"
#include "support/sqliteMemory.h"
#include "zav/Descriptions.h"
#include "zav/FaultTypeDef.h"
#include "zav/Sqlite3Db.h"
#include "zav/ZavSqlDescriptionsTbl.h"
#include "zav/ZavSqlFaultTypeDefTbl.h"

namespace {

const std::string ALL = "SELECT * FROM fault_type_definition";

/// A database with the fault types 1, 2 and 3, open in a silent connection.
class GetTblTest : public testing::Test {
protected:
    void SetUp() override
    {
        makeDatabase(m_file,
                     "INSERT INTO fault_type_definition VALUES"
                     "(1, 'first', 'error', 11, 101), (2, 'second', 'warning', 12, 102),"
                     "(3, 'third', 'info', 13, 103)");
        ASSERT_EQ(m_db.openDb(m_file, true), 0);
        m_trace.clear();
    }

    int query(const std::string& text) { return m_db.getTbl(text, m_records, &m_table); }

    /// Makes an SQL function without arguments of the open connection; it is called with m_db.
    void makeFunction(const char* name, void (*body)(sqlite3_context*, int, sqlite3_value**))
    {
        ASSERT_EQ(sqlite3_create_function(m_trace.connection(), name, 0, SQLITE_UTF8, &m_db, body,
                                          nullptr, nullptr),
                  SQLITE_OK);
    }

    void fillRecords()
    {
        m_records.resize(2);
        m_records[1].alias = "before";
    }

    void expectRecordsUntouched()
    {
        ASSERT_EQ(m_records.size(), 2U);
        EXPECT_EQ(m_records[0].alias, "");
        EXPECT_EQ(m_records[1].alias, "before");
    }

    const TempDir m_dir;
    const std::string m_file = m_dir.file("faults.db");
    SqlTrace m_trace;
    Sqlite3Db m_db{0};
    ZavSqlFaultTypeDefTbl m_table{"fault_type_definition"};
    std::vector<FaultTypeDef> m_records;
};

void leaveOpenState(sqlite3_context* context, int /*count*/, sqlite3_value** /*values*/)
{
    static_cast<Sqlite3Db*>(sqlite3_user_data(context))->m_dbState = 2;
    sqlite3_result_int(context, 1);
}

void leaveOpenStateAndFail(sqlite3_context* context, int /*count*/, sqlite3_value** /*values*/)
{
    static_cast<Sqlite3Db*>(sqlite3_user_data(context))->m_dbState = 2;
    sqlite3_result_error(context, "left", -1);
}

std::vector<std::string> columnNames(const ZavSqlFaultTypeDefTbl& table)
{
    std::vector<std::string> names;
    for (const auto& column : table.columns) {
        names.push_back(column.name);
    }
    return names;
}

const std::vector<std::string> MODEL_COLUMNS = {"code", "alias", "type", "bug",
                                                "clear_after_cycle_nr"};

TEST_F(GetTblTest, ClosedConnectionIsSilentAndLeavesEverythingUntouched)
{
    ASSERT_EQ(m_db.closeDb(), 0);
    m_db.m_dbgLevel = 2;
    fillRecords();
    m_table.record.alias = "working";
    const CoutCapture capture;
    EXPECT_EQ(query("SELECT alias FROM fault_type_definition"), -1);
    EXPECT_EQ(capture.text(), "");
    expectRecordsUntouched();
    EXPECT_EQ(columnNames(m_table), MODEL_COLUMNS);
    EXPECT_EQ(m_table.record.alias, "working");
    EXPECT_EQ(m_trace.statements(), std::vector<std::string>());
}

TEST_F(GetTblTest, StateOtherThanOneCountsAsNotOpen)
{
    fillRecords();
    const CoutCapture capture;
    for (const std::int32_t state : {0, 2, -1, 0x101}) {
        m_db.m_dbState = state;
        EXPECT_EQ(query(ALL), -1) << state;
        EXPECT_EQ(m_db.m_dbState, state);
    }
    expectRecordsUntouched();
    EXPECT_EQ(capture.text(), "");
    EXPECT_EQ(m_trace.statements(), std::vector<std::string>());
    m_db.m_dbState = 1;
    EXPECT_EQ(query(ALL), 3);
}

TEST_F(GetTblTest, StatementIsSentAsItIs)
{
    const std::string text = "sELECT  *\tFROM \"fault_type_definition\" WHERE code=2 -- the second";
    EXPECT_EQ(query(text), 1);
    EXPECT_EQ(m_trace.statements(), std::vector<std::string>{text});
}

TEST_F(GetTblTest, RecordsComeInTheOrderOfTheResult)
{
    const CoutCapture capture;
    EXPECT_EQ(query(ALL + " ORDER BY code DESC"), 3);
    ASSERT_EQ(m_records.size(), 3U);
    for (std::uint16_t i = 0; i < 3; ++i) {
        const unsigned code = 3U - i;
        EXPECT_EQ(m_records[i].code, code);
        EXPECT_EQ(m_records[i].bug, 10 + code);
        EXPECT_EQ(m_records[i].clear_after_cycle_nr, 100 + code);
    }
    EXPECT_EQ(m_records[0].alias, "third");
    EXPECT_EQ(m_records[0].type, "info");
    EXPECT_EQ(m_records[2].alias, "first");
    EXPECT_EQ(m_records[2].type, "error");
    EXPECT_EQ(capture.text(), "");
}

TEST_F(GetTblTest, WorkingRecordKeepsTheLastRow)
{
    EXPECT_EQ(query(ALL), 3);
    EXPECT_EQ(m_table.record.code, 3U);
    EXPECT_EQ(m_table.record.alias, "third");
    EXPECT_EQ(m_table.record.type, "info");
    EXPECT_EQ(m_table.record.bug, 13U);
    EXPECT_EQ(m_table.record.clear_after_cycle_nr, 103U);
    EXPECT_EQ(query(ALL + " WHERE code=9"), 0);
    EXPECT_EQ(m_table.record.alias, "third");
}

TEST_F(GetTblTest, ListHoldsOnlyTheRowsOfItsQuery)
{
    fillRecords();
    EXPECT_EQ(query(ALL + " WHERE code=2"), 1);
    ASSERT_EQ(m_records.size(), 1U);
    EXPECT_EQ(m_records[0].alias, "second");
}

TEST_F(GetTblTest, QueryWithoutRowsEmptiesTheListAndLeavesTheColumns)
{
    fillRecords();
    const CoutCapture capture;
    EXPECT_EQ(query("SELECT bug, code FROM fault_type_definition WHERE code=9"), 0);
    EXPECT_EQ(m_records.size(), 0U);
    EXPECT_EQ(columnNames(m_table), MODEL_COLUMNS);
    EXPECT_EQ(capture.text(), "");
}

TEST_F(GetTblTest, ListIsReservedOnceForAllRows)
{
    EXPECT_EQ(query(ALL), 3);
    EXPECT_EQ(m_records.capacity(), 3U);
}

TEST_F(GetTblTest, ListKeepsItsCapacity)
{
    m_records.reserve(100);
    const FaultTypeDef* const storage = m_records.data();
    EXPECT_EQ(query(ALL), 3);
    EXPECT_EQ(m_records.capacity(), 100U);
    EXPECT_EQ(m_records.data(), storage);
}

TEST_F(GetTblTest, ColumnsAreMatchedToTheResultForGood)
{
    EXPECT_EQ(query("SELECT alias, 5 AS extra, code FROM fault_type_definition"), 3);
    EXPECT_EQ(columnNames(m_table), (std::vector<std::string>{"alias", "extra", "code"}));
    EXPECT_EQ(m_records[1].code, 2U);
    EXPECT_EQ(m_records[1].alias, "second");
    EXPECT_EQ(m_records[1].type, "");

    EXPECT_EQ(query(ALL), 3);  // type, bug and clear_after_cycle_nr are no longer bound
    EXPECT_EQ(columnNames(m_table), MODEL_COLUMNS);
    EXPECT_EQ(m_records[1].alias, "second");
    EXPECT_EQ(m_records[1].type, "");
    EXPECT_EQ(m_records[1].bug, 0U);
}

TEST_F(GetTblTest, FieldMissingFromTheResultKeepsItsValueFromBefore)
{
    EXPECT_EQ(query(ALL + " WHERE code=2"), 1);
    EXPECT_EQ(query("SELECT code FROM fault_type_definition"), 3);
    EXPECT_EQ(m_records[0].code, 1U);
    EXPECT_EQ(m_records[0].alias, "second");
}

TEST_F(GetTblTest, CellsThatCannotBeDecodedAreReportedAndTheRowIsDelivered)
{
    const CoutCapture capture;
    EXPECT_EQ(query("SELECT 'abc' AS code, NULL AS alias, NULL AS bug, "
                    "70000 AS clear_after_cycle_nr UNION ALL SELECT 5, 'five', 6, 7"),
              2);
    EXPECT_EQ(capture.text(),
              "[ERROR] SQL3::printError() casting value \"abc\", typeid=j\n"
              "[ERROR] SQL3::printError() casting value \"70000\", typeid=t\n");
    ASSERT_EQ(m_records.size(), 2U);
    EXPECT_EQ(m_records[0].code, 0U);
    EXPECT_EQ(m_records[0].alias, "n/a");
    EXPECT_EQ(m_records[0].bug, 0U);
    EXPECT_EQ(m_records[0].clear_after_cycle_nr, 0U);
    EXPECT_EQ(m_records[1].code, 5U);
    EXPECT_EQ(m_records[1].alias, "five");
}

struct FailingQuery {
    const char* name;
    std::string query;
    std::string message;
};

void PrintTo(const FailingQuery& failing, std::ostream* stream)
{
    *stream << failing.name;
}

class GetTblFailingQueryTest : public GetTblTest,
                               public testing::WithParamInterface<FailingQuery> {};

TEST_P(GetTblFailingQueryTest, WritesOneLineAndLeavesTheListUntouched)
{
    fillRecords();
    m_table.record.alias = "working";
    m_db.m_dbgLevel = 2;
    const CoutCapture capture;
    EXPECT_EQ(query(GetParam().query), -2);
    EXPECT_EQ(capture.text(),
              "[ERROR] SQL3::getTbl() Sql Query failed: " + GetParam().message + "\n");
    expectRecordsUntouched();
    EXPECT_EQ(columnNames(m_table), MODEL_COLUMNS);
    EXPECT_EQ(m_table.record.alias, "working");
    EXPECT_EQ(m_db.m_dbState, 1);
}

INSTANTIATE_TEST_SUITE_P(
    Queries, GetTblFailingQueryTest,
    testing::Values(FailingQuery{"MissingTable", "SELECT * FROM missing",
                                 "no such table: missing Err=1"},
                    FailingQuery{"MissingColumn", "SELECT * FROM descriptions WHERE nr=1",
                                 "no such column: nr Err=1"},
                    FailingQuery{"NoStatement", "SELEKT", "near \"SELEKT\": syntax error Err=1"},
                    FailingQuery{"FailureAtALaterRow",
                                 "SELECT code, abs(-9223372036854775807 - (code = 3)) FROM "
                                 "fault_type_definition",
                                 "integer overflow Err=1"},
                    FailingQuery{"WritingToAReadOnlyDatabase", "DELETE FROM fault_type_definition",
                                 "attempt to write a readonly database Err=8"}),
    [](const auto& test) { return test.param.name; });

TEST_F(GetTblTest, FileThatIsNoDatabaseFails)
{
    std::ofstream(m_dir.file("notes.txt"))
        << "This is a text, long enough to hold more than a file header of a hundred bytes, but "
           "nothing that SQLite could read.\n";
    Sqlite3Db db(0);
    ASSERT_EQ(db.openDb(m_dir.file("notes.txt"), true), 0);
    const CoutCapture capture;
    std::cout << std::hex;  // an application's format does not count
    EXPECT_EQ(db.getTbl(ALL, m_records, &m_table), -2);
    std::cout << std::dec;
    EXPECT_EQ(capture.text(),
              "[ERROR] SQL3::getTbl() Sql Query failed: file is not a database Err=26\n");
}

TEST_F(GetTblTest, DamagedDatabaseFails)
{
    ASSERT_EQ(m_db.closeDb(), 0);
    {
        std::fstream file(m_file, std::ios::in | std::ios::out | std::ios::binary);
        file.seekp(100);  // behind the file's header, which stays whole
        file << std::string(3000, '\xff');
    }
    ASSERT_EQ(m_db.openDb(m_file, true), 0);
    const CoutCapture capture;
    EXPECT_EQ(query(ALL), -2);
    EXPECT_EQ(capture.text(),
              "[ERROR] SQL3::getTbl() Sql Query failed: database disk image is malformed Err=11\n");
}

TEST_F(GetTblTest, FailureWithoutAnErrorTextSilencesStandardOutput)
{
    fillRecords();
    const CoutCapture capture;
    {
        const NoSqliteMemory none;
        EXPECT_EQ(query(ALL), -2);
    }
    EXPECT_TRUE(std::cout.bad());
    std::cout << "lost" << std::endl;
    EXPECT_EQ(capture.text(), "[ERROR] SQL3::getTbl() Sql Query failed: ");
    expectRecordsUntouched();

    EXPECT_EQ(query("SELECT * FROM missing"), -2);
    EXPECT_EQ(capture.text(), "[ERROR] SQL3::getTbl() Sql Query failed: ");
    std::cout.clear();
    EXPECT_EQ(query("SELECT * FROM missing"), -2);
    EXPECT_EQ(capture.text(),
              "[ERROR] SQL3::getTbl() Sql Query failed: "
              "[ERROR] SQL3::getTbl() Sql Query failed: no such table: missing Err=1\n");
    EXPECT_EQ(query(ALL), 3);
}

TEST_F(GetTblTest, DoneIsWrittenAboveLevelOneOnly)
{
    const std::pair<std::uint32_t, std::string> cases[] = {
        {0, ""},
        {1, ""},
        {2, "[DEBUG] SQL3::getTbl() Done\n"},
        {3, "[DEBUG] SQL3::getTbl() Done\n"},
        {2147483648U, "[DEBUG] SQL3::getTbl() Done\n"},
        {4294967295U, "[DEBUG] SQL3::getTbl() Done\n"},
    };
    for (const auto& [level, expected] : cases) {
        m_db.m_dbgLevel = level;
        const CoutCapture capture;
        EXPECT_EQ(query(ALL), 3);
        EXPECT_EQ(query(ALL + " WHERE code=9"), 0);
        EXPECT_EQ(capture.text(), expected + expected) << level;
    }
}

TEST_F(GetTblTest, LinesAreWrittenAndFlushedUnderTheLogLock)
{
    m_db.m_dbgLevel = 2;
    LockProbe probe;
    {
        const CoutRedirect redirect(probe);
        EXPECT_EQ(query(ALL), 3);
        EXPECT_EQ(query("SELECT * FROM missing"), -2);
    }
    EXPECT_EQ(probe.flushedText(),
              "[DEBUG] SQL3::getTbl() Done\n"
              "[ERROR] SQL3::getTbl() Sql Query failed: no such table: missing Err=1\n");
    EXPECT_EQ(probe.flushes(), 2);
    EXPECT_EQ(probe.withoutLock(), 0);
    EXPECT_TRUE(isLogLockFree());
}

TEST_F(GetTblTest, LogLockIsFreeWhileTheDatabaseWorks)
{
    m_db.m_dbgLevel = 2;
    makeFunction("is_log_lock_free",
                 [](sqlite3_context* context, int /*count*/, sqlite3_value** /*values*/) {
                     sqlite3_result_int(context, isLogLockFree() ? 1 : 0);
                 });
    const CoutCapture capture;
    EXPECT_EQ(query("SELECT is_log_lock_free() AS code"), 1);
    EXPECT_EQ(m_records.at(0).code, 1U);
}

TEST_F(GetTblTest, MemoryOfAQueryIsReleased)
{
    EXPECT_EQ(query(ALL), 3);  // SQLite's own caches are filled now
    const CoutCapture capture;
    EXPECT_EQ(query("SELECT * FROM missing"), -2);
    const sqlite3_int64 before = sqlite3_memory_used();
    EXPECT_EQ(query(ALL), 3);
    EXPECT_EQ(sqlite3_memory_used(), before);
    EXPECT_EQ(query(ALL + " WHERE code=9"), 0);
    EXPECT_EQ(sqlite3_memory_used(), before);
    EXPECT_EQ(query("SELECT * FROM missing"), -2);
    EXPECT_EQ(sqlite3_memory_used(), before);
}

TEST_F(GetTblTest, ResultIsLeftToWhoeverTakesTheConnectionOutOfItsOpenState)
{
    makeFunction("leave", leaveOpenState);
    EXPECT_EQ(query("SELECT *, leave() FROM fault_type_definition"), 3);
    sqlite3_free_table(lastTableMemory().result);
    m_db.m_dbState = 1;
    const sqlite3_int64 before = sqlite3_memory_used();

    m_db.m_dbgLevel = 2;
    const CoutCapture capture;
    EXPECT_EQ(query("SELECT *, leave() FROM fault_type_definition"), 3);
    EXPECT_EQ(m_db.m_dbState, 2);
    EXPECT_EQ(m_records.at(2).alias, "third");
    EXPECT_EQ(capture.text(), "[DEBUG] SQL3::getTbl() Done\n");
    EXPECT_GT(sqlite3_memory_used(), before);

    sqlite3_free_table(lastTableMemory().result);
    EXPECT_EQ(sqlite3_memory_used(), before);
    m_db.m_dbState = 1;
}

TEST_F(GetTblTest, ErrorTextIsLeftToWhoeverTakesTheConnectionOutOfItsOpenState)
{
    makeFunction("leave", leaveOpenStateAndFail);
    const std::string text = "SELECT leave() FROM fault_type_definition";
    const CoutCapture capture;
    EXPECT_EQ(query(text), -2);
    sqlite3_free(lastTableMemory().errorText);
    m_db.m_dbState = 1;
    const sqlite3_int64 before = sqlite3_memory_used();

    EXPECT_EQ(query(text), -2);
    EXPECT_EQ(m_db.m_dbState, 2);
    EXPECT_EQ(capture.text(),
              "[ERROR] SQL3::getTbl() Sql Query failed: left Err=1\n"
              "[ERROR] SQL3::getTbl() Sql Query failed: left Err=1\n");
    EXPECT_GT(sqlite3_memory_used(), before);

    sqlite3_free(lastTableMemory().errorText);
    EXPECT_EQ(sqlite3_memory_used(), before);
    m_db.m_dbState = 1;
}

TEST_F(GetTblTest, LogLockThatFailsPassesAndLeavesTheErrorText)
{
    const std::string text = "SELECT * FROM missing";
    {
        const CoutCapture capture;
        EXPECT_EQ(query(text), -2);
    }
    const sqlite3_int64 before = sqlite3_memory_used();
    fillRecords();
    const CoutCapture capture;
    {
        const FailingLogMutex failing;
        EXPECT_THROW(query(text), std::system_error);
    }
    EXPECT_EQ(capture.text(), "");
    expectRecordsUntouched();
    EXPECT_GT(sqlite3_memory_used(), before);
    EXPECT_STREQ(lastTableMemory().errorText, "no such table: missing");
    sqlite3_free(lastTableMemory().errorText);
    EXPECT_EQ(sqlite3_memory_used(), before);
}

TEST_F(GetTblTest, LogLockThatFailsAtTheDoneLinePassesAfterTheResultIsReleased)
{
    EXPECT_EQ(query(ALL), 3);
    m_db.m_dbgLevel = 2;
    const sqlite3_int64 before = sqlite3_memory_used();
    {
        const FailingLogMutex failing;
        EXPECT_THROW(query(ALL), std::system_error);
    }
    EXPECT_EQ(sqlite3_memory_used(), before);
    EXPECT_EQ(m_records.size(), 3U);
}

TEST_F(GetTblTest, FailedAllocationPassesAndLeavesTheResult)
{
    sqlite3_trace_v2(m_trace.connection(), 0, nullptr, nullptr);  // it allocates too
    EXPECT_EQ(query(ALL), 3);
    const sqlite3_int64 before = sqlite3_memory_used();
    std::vector<FaultTypeDef> records;
    int count = 0;
    bool isAnyReleased = false;
    const int exceptions = failEachAllocation(
        [&] {
            std::vector<FaultTypeDef>().swap(records);
            count = m_db.getTbl(ALL, records, &m_table);
        },
        [&] {
            isAnyReleased = isAnyReleased || sqlite3_memory_used() == before;
            sqlite3_free_table(lastTableMemory().result);
        });
    EXPECT_GE(exceptions, 3);  // the list, the column names, their matching
    EXPECT_FALSE(isAnyReleased);
    EXPECT_EQ(sqlite3_memory_used(), before);
    EXPECT_EQ(count, 3);
    EXPECT_EQ(records.at(2).alias, "third");
}

TEST_F(GetTblTest, ListIsEmptiedAndReservedBeforeTheColumnsAreMatched)
{
    sqlite3_trace_v2(m_trace.connection(), 0, nullptr, nullptr);  // it allocates too
    const std::string statement = "SELECT alias FROM fault_type_definition";
    m_records.resize(2);
    m_records.shrink_to_fit();
    {
        const FailingNew failing(1);  // the reserve for more rows than the list has room for
        EXPECT_THROW(query(statement), std::bad_alloc);
    }
    sqlite3_free_table(lastTableMemory().result);
    EXPECT_TRUE(m_records.empty());
    EXPECT_EQ(columnNames(m_table), MODEL_COLUMNS);
}

TEST_F(GetTblTest, DescriptionsAreRead)
{
    ZavSqlDescriptionsTbl table("descriptions");
    std::vector<Descriptions> records(1);
    runSql(m_file,
           "INSERT INTO descriptions VALUES(1, 17, 2, 'Tür', 'kurz', NULL, 'c', ''),"
           "(2, 17, 3, 'Porte', 'court', 'd', NULL, 'r')");
    EXPECT_EQ(m_db.getTbl("SELECT * FROM descriptions", records, &table), 2);
    ASSERT_EQ(records.size(), 2U);
    EXPECT_EQ(records[0].id, 1U);
    EXPECT_EQ(records[0].id_fault_type, 17U);
    EXPECT_EQ(records[0].id_language, 2U);
    EXPECT_EQ(records[0].name, "Tür");
    EXPECT_EQ(records[0].short_description, "kurz");
    EXPECT_EQ(records[0].description, "n/a");
    EXPECT_EQ(records[0].comment, "c");
    EXPECT_EQ(records[0].remedy, "");
    EXPECT_EQ(records[1].comment, "n/a");
    EXPECT_EQ(records[1].remedy, "r");
}

/// An application's own record and table, with a kind of value of its own.
struct Cycle {
    unsigned code = 0;
    bool isLong = false;
    std::string alias;
};

class CycleTbl : public SqlTbl<Cycle> {
public:
    static constexpr auto VALUE_TYPE_LENGTH = static_cast<columnValueType_t>(0xfffffff0U);

    explicit CycleTbl(Sqlite3Db* leaving = nullptr) : SqlTbl<Cycle>("cycles"), m_leaving(leaving)
    {
        CycleTbl::init("");
    }

    void init(const std::string& /*name*/) override
    {
        columns = {{"code", "INTEGER", VALUE_TYPE_UINT32, &record.code},
                   {"length", "VARCHAR", VALUE_TYPE_LENGTH, &record.isLong},
                   {"alias", "VARCHAR", VALUE_TYPE_STRING, &record.alias}};
    }

    void convertValueFromStr(columnValueType_t type, const std::string& text,
                             void* value) const override
    {
        EXPECT_EQ(type, VALUE_TYPE_LENGTH);
        *static_cast<bool*>(value) = text == "long";
        if (m_leaving != nullptr) {
            m_leaving->m_dbState = 0;
        }
    }

private:
    Sqlite3Db* m_leaving;
};

/// An element of a list that is made from a copy of the record, and counts itself.
struct CycleCopy {
    explicit CycleCopy(const Cycle& cycle) : code(cycle.code), isLong(cycle.isLong) {}

    unsigned code;
    bool isLong;
};

const std::string CYCLES =
    "SELECT code, CASE code WHEN 2 THEN 'long' ELSE 'short' END AS length "
    "FROM fault_type_definition";

TEST_F(GetTblTest, ApplicationReadsItsOwnRecordsThroughItsOwnTable)
{
    CycleTbl table;
    std::vector<CycleCopy> cycles;
    EXPECT_EQ(m_db.getTbl(CYCLES, cycles, &table), 3);
    ASSERT_EQ(cycles.size(), 3U);
    EXPECT_EQ(cycles[1].code, 2U);
    EXPECT_TRUE(cycles[1].isLong);
    EXPECT_FALSE(cycles[2].isLong);
    EXPECT_EQ(table.record.code, 3U);
}

TEST_F(GetTblTest, RecordsAreCopiesOfTheWorkingRecord)
{
    CycleTbl table;
    std::vector<Cycle> cycles;
    const std::string alias = "an alias too long for the short string buffer";
    EXPECT_EQ(m_db.getTbl("SELECT '" + alias + "' AS alias", cycles, &table), 1);
    EXPECT_EQ(cycles.at(0).alias, alias);
    EXPECT_EQ(table.record.alias, alias);
}

TEST_F(GetTblTest, ResultIsLeftToATableThatTakesTheConnectionOutOfItsOpenState)
{
    CycleTbl table(&m_db);
    std::vector<CycleCopy> cycles;
    EXPECT_EQ(m_db.getTbl(CYCLES, cycles, &table), 3);
    sqlite3_free_table(lastTableMemory().result);
    m_db.m_dbState = 1;
    const sqlite3_int64 before = sqlite3_memory_used();

    EXPECT_EQ(m_db.getTbl(CYCLES, cycles, &table), 3);
    EXPECT_GT(sqlite3_memory_used(), before);
    sqlite3_free_table(lastTableMemory().result);
    EXPECT_EQ(sqlite3_memory_used(), before);
    m_db.m_dbState = 1;
}

}  // namespace
