#include <gtest/gtest.h>
#include <sqlite3.h>

#include <filesystem>
#include <functional>
#include <ostream>
#include <set>
#include <string>

#include "support/TempDir.h"
#include "support/autoExtension.h"
#include "support/database.h"
#include "support/query.h"
#include "zav/Sqlite3Db.h"

namespace {

constexpr const char* RECORDS =
    "INSERT INTO fault_type_definition VALUES (17, 'E017', 'error', 3, 5);"
    "INSERT INTO descriptions VALUES (1, 17, 2, 'Overheat', 'Too hot', '', '', 'Cool down')";

sqlite3* g_opened = nullptr;

/// Stands for a SQLite whose build, or whose application, allows everything.
int allowEverything(sqlite3* db, char** /*errorText*/, const sqlite3_api_routines* /*api*/)
{
    g_opened = db;
    for (const int option :
         {SQLITE_DBCONFIG_ENABLE_LOAD_EXTENSION, SQLITE_DBCONFIG_ENABLE_FTS3_TOKENIZER,
          SQLITE_DBCONFIG_TRUSTED_SCHEMA, SQLITE_DBCONFIG_ENABLE_TRIGGER}) {
        sqlite3_db_config(db, option, 1, nullptr);
    }
    sqlite3_db_config(db, SQLITE_DBCONFIG_DEFENSIVE, 0, nullptr);
    return sqlite3_exec(db, "PRAGMA cell_size_check=OFF", nullptr, nullptr, nullptr);
}

class Hardening : public testing::Test {
protected:
    void SetUp() override { addAutoExtension(allowEverything); }
    void TearDown() override { removeAutoExtension(allowEverything); }

    void open(bool readOnly) { ASSERT_EQ(m_db.openDb(m_file, readOnly), 0); }

    void openWithSql(const std::string& sql, bool readOnly = true)
    {
        runSql(m_file, sql);
        open(readOnly);
    }

    static int option(int which)
    {
        int value = -1;
        sqlite3_db_config(g_opened, which, -1, &value);
        return value;
    }

    TempDir m_dir;
    const std::string m_file = makeDatabase(m_dir.file("faults.db"), RECORDS);
    Sqlite3Db m_db{0};
};

template <class Case>
std::string nameOf(const testing::TestParamInfo<Case>& tested)
{
    return tested.param.name;
}

struct Switch {
    const char* name;
    int option;
    int whenReading;
    int whenWriting;
};

void PrintTo(const Switch& tested, std::ostream* stream)
{
    *stream << tested.name;
}

class Switches : public Hardening, public testing::WithParamInterface<Switch> {};

TEST_P(Switches, AreSetWhateverTheDefault)
{
    open(true);
    EXPECT_EQ(option(GetParam().option), GetParam().whenReading);
    ASSERT_EQ(m_db.closeDb(), 0);
    open(false);
    EXPECT_EQ(option(GetParam().option), GetParam().whenWriting);
}

INSTANTIATE_TEST_SUITE_P(
    Hardening, Switches,
    testing::Values(Switch{"LoadExtension", SQLITE_DBCONFIG_ENABLE_LOAD_EXTENSION, 0, 0},
                    Switch{"Fts3Tokenizer", SQLITE_DBCONFIG_ENABLE_FTS3_TOKENIZER, 0, 0},
                    Switch{"Defensive", SQLITE_DBCONFIG_DEFENSIVE, 1, 1},
                    Switch{"TrustedSchema", SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, 0},
                    Switch{"Trigger", SQLITE_DBCONFIG_ENABLE_TRIGGER, 0, 1},
                    Switch{"View", SQLITE_DBCONFIG_ENABLE_VIEW, 1, 1}),
    nameOf<Switch>);

struct Refusal {
    const char* name;
    const char* sql;
    const char* outcome;
};

class Refusals : public Hardening, public testing::WithParamInterface<Refusal> {};

TEST_P(Refusals, ComeFromAReadingConnection)
{
    open(true);
    EXPECT_EQ(query(m_db, GetParam().sql), GetParam().outcome);
}

constexpr const char* READ_ONLY = "8: attempt to write a readonly database";
constexpr const char* NO_ATTACHING = "1: too many attached databases - max 0";

INSTANTIATE_TEST_SUITE_P(
    Hardening, Refusals,
    testing::Values(Refusal{"Insert", "INSERT INTO fault_type_definition(alias) VALUES ('x')",
                            READ_ONLY},
                    Refusal{"Update", "UPDATE fault_type_definition SET alias = 'x'", READ_ONLY},
                    Refusal{"Delete", "DELETE FROM descriptions", READ_ONLY},
                    Refusal{"CreateTable", "CREATE TABLE x(y)", READ_ONLY},
                    Refusal{"CreateTemporaryTable", "CREATE TEMP TABLE x AS SELECT 1", READ_ONLY},
                    Refusal{"Drop", "DROP TABLE descriptions", READ_ONLY},
                    Refusal{"UserVersion", "PRAGMA user_version = 7", READ_ONLY},
                    Refusal{"Vacuum", "VACUUM", NO_ATTACHING},
                    Refusal{"Attach", "ATTACH '/tmp/zav-never-made.db' AS x", NO_ATTACHING},
                    Refusal{"AttachMemory", "ATTACH ':memory:' AS x", NO_ATTACHING},
                    Refusal{"VacuumInto", "VACUUM INTO '/tmp/zav-never-made.db'", NO_ATTACHING},
                    Refusal{"LoadExtension", "SELECT load_extension('/tmp/zav-never-made.so')",
                            "1: not authorized"},
                    Refusal{"CellSizeCheckIsOn", "PRAGMA cell_size_check", "cell_size_check|1"},
                    Refusal{"TemporaryFilesAreOff", "PRAGMA temp_store", "temp_store|2"},
                    Refusal{"TooLongValue", "SELECT zeroblob(16 * 1024 * 1024 + 1)",
                            "18: string or blob too big"}),
    nameOf<Refusal>);

std::string repeated(const std::string& text, int times, const std::string& between)
{
    std::string list = text;
    for (int i = 1; i < times; ++i) {
        list += between + text;
    }
    return list;
}

/// A bound of what a query may be, and how SQLite says that it is passed.
struct Limit {
    const char* name;
    int most;
    std::function<std::string(int size)> query;
    const char* refusal;
};

void PrintTo(const Limit& limit, std::ostream* stream)
{
    *stream << limit.name;
}

class Limits : public Hardening, public testing::WithParamInterface<Limit> {};

TEST_P(Limits, AreWhereTheyAreSaidToBe)
{
    open(true);
    const std::string atTheLimit = query(m_db, GetParam().query(GetParam().most));
    EXPECT_EQ(atTheLimit.find(": "), std::string::npos) << atTheLimit;
    EXPECT_EQ(query(m_db, GetParam().query(GetParam().most + 1)), GetParam().refusal);
}

INSTANTIATE_TEST_SUITE_P(
    Hardening, Limits,
    testing::Values(Limit{"Expression", 200,
                          [](int depth) { return "SELECT " + repeated("1", depth, "+"); },
                          "1: Expression tree is too large (maximum depth 200)"},
                    Limit{"Compound", 200,
                          [](int terms) { return repeated("SELECT 1", terms, " UNION ALL "); },
                          "1: too many terms in compound SELECT"},
                    Limit{"Pattern", 2000,
                          [](int length) {
                              return "SELECT 'x' LIKE '" +
                                     std::string(static_cast<std::size_t>(length), '_') + "'";
                          },
                          "1: LIKE or GLOB pattern too complex"}),
    nameOf<Limit>);

// Three instructions for each code, of which SQLite has others for processes of 32 bits.
TEST_F(Hardening, LongListOfCodesIsAskedFor)
{
    const auto askFor = [this](int codes, const std::string& table) {
        return query(m_db, "SELECT code FROM " + table + " WHERE code IN (" +
                               repeated("17", codes, ",") + ")");
    };
    constexpr bool IS_32_BIT = sizeof(void*) == 4;
    constexpr int MOST = IS_32_BIT ? 69000 : 57000;
    constexpr int MOST_OF_A_VIEW = IS_32_BIT ? 8600 : 7100;
    openWithSql("CREATE VIEW v AS SELECT * FROM fault_type_definition");
    EXPECT_EQ(askFor(MOST, "fault_type_definition"), "code|17");
    EXPECT_EQ(askFor(MOST + 1000, "fault_type_definition"), "7: out of memory");
    EXPECT_EQ(askFor(MOST_OF_A_VIEW, "v"), "code|17");
    EXPECT_EQ(askFor(MOST_OF_A_VIEW + 100, "v"), "7: out of memory");
}

TEST_F(Hardening, ApplicationsOwnJoinOfTenTablesRuns)
{
    std::string sql = "SELECT t0.alias FROM fault_type_definition t0";
    for (int i = 1; i < 10; ++i) {
        const std::string name = "t" + std::to_string(i);
        sql += " JOIN fault_type_definition " + name + " ON " + name + ".code = t0.code";
    }
    open(true);
    EXPECT_EQ(query(m_db, sql), "alias|E017");
}

std::string viewsOver(int height)
{
    std::string sql = "CREATE VIEW v1 AS SELECT * FROM descriptions;";
    for (int i = 2; i <= height; ++i) {
        sql += "CREATE VIEW v" + std::to_string(i) + " AS SELECT * FROM v" + std::to_string(i - 1) +
               ";";
    }
    return sql;
}

TEST_F(Hardening, ViewsAreReadUpToSixteenHigh)
{
    openWithSql(viewsOver(17));
    EXPECT_EQ(query(m_db, "SELECT name FROM v16"), "name|Overheat");
    EXPECT_EQ(query(m_db, "SELECT name FROM v17"), "1: the query is too complex");
}

/// A way to name a column, as SQLite understands it, after its table's alias "a".
struct Naming {
    const char* name;
    const char* before;
    const char* each;
    const char* after;
    const char* separator = "||";
};

class Doubling : public Hardening, public testing::WithParamInterface<Naming> {};

TEST_P(Doubling, ViewIsRefusedHoweverItNamesTheColumn)
{
    constexpr int HEIGHT = 10;
    std::string sql = "CREATE VIEW v0 AS SELECT name AS x FROM descriptions;";
    for (int i = 1; i <= HEIGHT; ++i) {
        sql += "CREATE VIEW v" + std::to_string(i) + " AS SELECT " + GetParam().before +
               repeated(GetParam().each, 6, GetParam().separator) + GetParam().after;
        sql.replace(sql.rfind("BELOW"), 5, "v" + std::to_string(i - 1));
        sql += ";";
    }
    openWithSql(sql);
    EXPECT_EQ(query(m_db, "SELECT count(x) FROM v10"), "1: the query is too complex");
}

INSTANTIATE_TEST_SUITE_P(
    Hardening, Doubling,
    testing::Values(
        Naming{"Plain", "", "x", " AS x FROM BELOW a"},
        Naming{"Text", "", "a.'x'", " AS x FROM BELOW a"},
        Naming{"InAConditionsArguments", "a.x AS x FROM BELOW a JOIN descriptions d ON max(1, ",
               "a.x", ")"},
        Naming{"InAConditionsCase", "a.x AS x FROM BELOW a JOIN descriptions d ON CASE WHEN ",
               "a.x", " THEN 1 END"},
        Naming{"InTheArgumentsOfATable", "value AS x FROM BELOW a, json_each(", "a.x", ")"},
        Naming{"InTheArgumentsOfAQuotedTable", "value AS x FROM BELOW a, \"json_each\"(", "a.x",
               ")"},
        Naming{"BehindDistinctFrom", "1 IS DISTINCT FROM x || ", "x", " AS x FROM BELOW a"},
        Naming{"Ordinal", "x FROM BELOW a ORDER BY ", "(1)", "", ","},
        Naming{"InAWindow", "count(*) OVER w AS x FROM BELOW a WINDOW w AS (ORDER BY ", "x", ")"}),
    nameOf<Naming>);

TEST_F(Hardening, GeneratedColumnIsReckonedFromAQuotedNameOn)
{
    std::string sql = "CREATE TABLE t(c0";
    for (int i = 1; i <= 20; ++i) {
        sql += ", c" + std::to_string(i) + " AS (\"c0\" || c" + std::to_string(i - 1) + ")";
    }
    openWithSql(sql + "); CREATE TABLE u(c0, c1 AS (\"c0\" || c0)); INSERT INTO u VALUES('a')");
    EXPECT_EQ(query(m_db, "SELECT c1 FROM u"), "c1|aa");
    EXPECT_EQ(query(m_db, "SELECT c20 FROM t"), "1: the query is too complex");
}

TEST_F(Hardening, PragmaOfAViewIsReckonedAsTheView)
{
    openWithSql(viewsOver(17));
    EXPECT_EQ(query(m_db, "SELECT name FROM pragma_table_info('v' || '17')"),
              "1: the query is too complex");
}

TEST_F(Hardening, VirtualTableIsReckonedWithEveryView)
{
    openWithSql(viewsOver(16) +
                "CREATE VIEW \"a b\" AS SELECT * FROM v16;"
                "CREATE VIRTUAL TABLE t USING fts4(name, content=a b)");
    EXPECT_EQ(query(m_db, "SELECT name FROM t WHERE docid=1"), "1: the query is too complex");
}

TEST_F(Hardening, ViewsMayHaveAHundredColumns)
{
    openWithSql("CREATE VIEW most AS SELECT " + repeated("name", 100, ",") +
                " FROM descriptions; CREATE VIEW more AS SELECT " + repeated("name", 101, ",") +
                " FROM descriptions");
    EXPECT_EQ(query(m_db, "SELECT count(*) AS n FROM most"), "n|1");
    EXPECT_EQ(query(m_db, "SELECT * FROM more"), "1: too many columns in result set");
}

TEST_F(Hardening, NoQueryMakesATextThatTheFileCouldNotHold)
{
    openWithSql("CREATE VIEW v AS SELECT hex(zeroblob(20000)) AS t");
    EXPECT_EQ(query(m_db, "SELECT length(t) FROM v"), "18: string or blob too big");
    EXPECT_EQ(query(m_db, "SELECT length(hex(zeroblob(20000))) AS n"),
              "18: string or blob too big");
    EXPECT_EQ(query(m_db, "SELECT length(hex(zeroblob(8000))) AS n"), "n|16000");
}

TEST_F(Hardening, StatementOfTheSchemaMayHaveAQuarterOfAMegabyte)
{
    const auto statementOf = [](const std::string& table, std::size_t length) {
        return "CREATE TABLE " + table + "(x /*" + std::string(length, ' ') + "*/)";
    };
    openWithSql(statementOf("shorter", 260000));
    EXPECT_EQ(query(m_db, "SELECT name FROM descriptions"), "name|Overheat");
    runSql(m_file, statementOf("longer", 264000));
    EXPECT_EQ(query(m_db, "SELECT name FROM descriptions"), "18: string or blob too big");
}

TEST_F(Hardening, ChangedSchemaIsLookedAtBeforeAQueryIsRunOnIt)
{
    open(true);
    EXPECT_EQ(query(m_db, "SELECT name FROM descriptions"), "name|Overheat");
    runSql(m_file, viewsOver(17) +
                       "CREATE TABLE other AS SELECT 1 AS name; ALTER TABLE descriptions RENAME TO "
                       "texts; CREATE VIEW descriptions AS SELECT * FROM other");
    EXPECT_EQ(query(m_db, "SELECT name FROM descriptions"), "name|1");
    runSql(
        m_file, "DROP VIEW descriptions; CREATE VIEW descriptions AS SELECT * FROM w16;" + [] {
            std::string sql = "CREATE VIEW w0 AS SELECT * FROM texts;";
            for (int i = 1; i <= 16; ++i) {
                sql += "CREATE VIEW w" + std::to_string(i) + " AS SELECT * FROM w" +
                       std::to_string(i - 1) + ";";
            }
            return sql;
        }());
    EXPECT_EQ(query(m_db, "SELECT name FROM descriptions"), "1: the query is too complex");
}

TEST_F(Hardening, ViewCallingAnUnsafeFunctionIsRefused)
{
    openWithSql("CREATE VIEW v AS SELECT load_extension('x')");
    EXPECT_EQ(query(m_db, "SELECT * FROM v"), "1: unsafe use of load_extension()");
}

TEST_F(Hardening, OrdinaryViewIsRead)
{
    openWithSql(
        "CREATE VIEW v AS SELECT upper(alias) AS a, count(*) AS n FROM fault_type_definition "
        "JOIN descriptions ON id_fault_type = code GROUP BY code ORDER BY a");
    EXPECT_EQ(query(m_db, "SELECT * FROM v"), "a|n|E017|1");
}

TEST_F(Hardening, LongestValueIsRead)
{
    openWithSql("CREATE TABLE t AS SELECT zeroblob(16 * 1024 * 1024 - 100) AS b");
    EXPECT_EQ(query(m_db, "SELECT length(b) AS n FROM t"), "n|16777116");
}

TEST_F(Hardening, WritingConnectionWritesAttachesAndFiresTriggers)
{
    openWithSql(
        "CREATE TABLE log(alias);"
        "CREATE TRIGGER t AFTER UPDATE ON fault_type_definition "
        "BEGIN INSERT INTO log VALUES (new.alias); END",
        false);
    EXPECT_EQ(query(m_db, "UPDATE fault_type_definition SET alias = 'new'"), "");
    EXPECT_EQ(query(m_db, "SELECT alias FROM log"), "alias|new");
    EXPECT_EQ(query(m_db, "CREATE TEMP TABLE x(y)"), "");
    EXPECT_EQ(query(m_db, "ATTACH ':memory:' AS m"), "");
}

std::set<std::string> filesIn(const std::string& directory)
{
    std::set<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(directory)) {
        names.insert(entry.path().filename());
    }
    return names;
}

TEST_F(Hardening, NothingIsWrittenByAnyUse)
{
    const std::string before = contents(m_file);
    open(true);
    for (const char* sql : {"SELECT * FROM descriptions", "DELETE FROM descriptions", "VACUUM",
                            "BEGIN IMMEDIATE", "PRAGMA journal_mode=WAL", "no SQL at all"}) {
        query(m_db, sql);
    }
    ASSERT_EQ(m_db.closeDb(), 0);
    EXPECT_EQ(contents(m_file), before);
    EXPECT_EQ(filesIn(m_dir.path()), std::set<std::string>{"faults.db"});
}

TEST_F(Hardening, MemoryDatabaseOpensForReadingAndForWriting)
{
    for (const bool readOnly : {true, false}) {
        ASSERT_EQ(m_db.openDb(":memory:", readOnly), 0);
        EXPECT_EQ(query(m_db, "SELECT 1 AS n"), "n|1");
        ASSERT_EQ(m_db.closeDb(), 0);
    }
}

}  // namespace
