#include "zav/Sqlite3Db.h"

#include <gtest/gtest.h>
#include <sqlite3.h>
#include <sys/stat.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <memory>
#include <ostream>
#include <string>
#include <thread>
#include <type_traits>
#include <vector>

#include "support/CoutCapture.h"
#include "support/SqlTrace.h"
#include "support/TempDir.h"
#include "support/WithoutRootRights.h"
#include "support/autoExtension.h"
#include "support/database.h"
#include "support/sqliteMemory.h"

namespace fs = std::filesystem;

namespace {

const std::string ONE_FAULT = "INSERT INTO fault_type_definition VALUES(7, 'A7', 'error', 0, 3);";

/// What getTable() hands out, released as its contract says.
class Table {
public:
    Table(const Sqlite3Db& db, const std::string& sql)
        : code(db.getTable(sql, &cells, &rowCount, &columnCount, &errorText))
    {
    }
    ~Table()
    {
        sqlite3_free_table(cells);
        sqlite3_free(errorText);
    }
    Table(const Table&) = delete;
    Table& operator=(const Table&) = delete;

    char** cells = nullptr;
    int rowCount = 0;
    int columnCount = 0;
    char* errorText = nullptr;
    int code;
};

/// A folder of its own as the working directory, so that relative names are seen too.
class Sqlite3DbTest : public testing::Test {
protected:
    Sqlite3DbTest() { fs::current_path(m_dir.path()); }
    ~Sqlite3DbTest() override { fs::current_path(m_previousDirectory); }

    std::vector<std::string> namesInDir() const
    {
        std::vector<std::string> names;
        for (const fs::directory_entry& entry : fs::directory_iterator(m_dir.path())) {
            names.push_back(entry.path().filename());
        }
        std::sort(names.begin(), names.end());
        return names;
    }

    const fs::path m_previousDirectory = fs::current_path();
    const TempDir m_dir;
    Sqlite3Db m_db{0};
};

std::string contentOf(const std::string& file)
{
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

void expectClosed(const Sqlite3Db& db)
{
    EXPECT_EQ(db.m_dbState, 0);
    EXPECT_EQ(db.path(), "");
    EXPECT_FALSE(db.isReadOnly());
    const Table table(db, "SELECT 1");
    EXPECT_EQ(table.code, 21);
    EXPECT_EQ(table.errorText, nullptr);
    EXPECT_EQ(table.cells, nullptr);
}

TEST(Sqlite3Db, ConstructionStoresTheLevelAndOpensNothing)
{
    const SqlTrace trace;
    const CoutCapture capture;
    const Sqlite3Db db(4294967295U);
    EXPECT_EQ(db.m_dbgLevel, 4294967295U);
    EXPECT_EQ(db.lastCode(), 0);
    EXPECT_EQ(db.lastErrorText(), "");
    expectClosed(db);
    EXPECT_EQ(trace.opened(), 0);
    EXPECT_EQ(capture.text(), "");
}

TEST(Sqlite3Db, MembersHaveTheirPlacesInTheBinaryInterface)
{
    struct Layout {
        virtual ~Layout() = default;
        std::uint32_t level = 0;
        std::string path;
        std::int32_t word = 0;
        std::int32_t state = 0;
        bool flag = false;
        std::string text;
        void* last = nullptr;
    };
    const Layout layout;
    const Sqlite3Db db(0);
    const auto offset = [](const auto& object, const auto& member) {
        return reinterpret_cast<std::uintptr_t>(&member) -
               reinterpret_cast<std::uintptr_t>(&object);
    };
    EXPECT_EQ(sizeof(Sqlite3Db), sizeof(Layout));
    EXPECT_EQ(offset(db, db.m_dbgLevel), offset(layout, layout.level));
    EXPECT_EQ(offset(db, db.path()), offset(layout, layout.path));
    EXPECT_EQ(offset(db, db.m_dbState), offset(layout, layout.state));
    EXPECT_EQ(offset(db, db.lastErrorText()), offset(layout, layout.text));
}

TEST(Sqlite3Db, TypeIsPolymorphicAndNotCopied)
{
    EXPECT_TRUE(std::has_virtual_destructor<Sqlite3Db>::value);
    EXPECT_FALSE(std::is_copy_constructible<Sqlite3Db>::value);
    EXPECT_FALSE(std::is_copy_assignable<Sqlite3Db>::value);
    EXPECT_TRUE((std::is_same<decltype(Sqlite3Db::m_dbgLevel), std::uint32_t>::value));
    EXPECT_TRUE((std::is_same<decltype(Sqlite3Db::m_dbState), std::int32_t>::value));
}

struct PathCase {
    const char* name;
    std::string path;  // relative to a new folder
    std::function<void()> prepare;
    const char* refusal;  // null: it opens
};

void PrintTo(const PathCase& pathCase, std::ostream* stream)
{
    *stream << pathCase.name;
}

class Sqlite3DbPathTest : public Sqlite3DbTest, public testing::WithParamInterface<PathCase> {};

TEST_P(Sqlite3DbPathTest, OpensRegularFilesOnlyAndCreatesNothing)
{
    const PathCase& param = GetParam();
    param.prepare();
    const std::vector<std::string> before = namesInDir();
    const CoutCapture capture;

    for (const bool readOnly : {true, false}) {
        if (param.refusal == nullptr) {
            EXPECT_EQ(m_db.openDb(param.path, readOnly), 0);
            EXPECT_EQ(m_db.m_dbState, 1);
            EXPECT_EQ(m_db.path(), param.path);
            EXPECT_EQ(m_db.lastCode(), 0);
            EXPECT_EQ(m_db.lastErrorText(), "");
            EXPECT_EQ(m_db.isReadOnly(), readOnly);
            EXPECT_EQ(m_db.closeDb(), 0);
        } else {
            EXPECT_EQ(m_db.openDb(param.path, readOnly), -2);
            EXPECT_EQ(m_db.lastCode(), 14);
            EXPECT_EQ(m_db.lastErrorText(), param.refusal);
            expectClosed(m_db);
        }
    }
    EXPECT_EQ(namesInDir(), before);
    EXPECT_EQ(capture.text(), "");
}

void nothing() {}

constexpr const char* MISSING = "No such file or directory";
constexpr const char* NOT_REGULAR = "not a regular file";

const PathCase PATH_CASES[] = {
    {"Database", "faults.db", [] { makeDatabase("faults.db"); }, nullptr},
    {"LinkToADatabase", "link.db",
     [] {
         makeDatabase("faults.db");
         fs::create_symlink("faults.db", "link.db");
     },
     nullptr},
    {"TextFile", "notes.txt", [] { std::ofstream("notes.txt") << "no database\n"; }, nullptr},
    {"EmptyFile", "empty.db", [] { std::ofstream("empty.db"); }, nullptr},
    {"NameLikeAUri", "file:faults.db", [] { makeDatabase("./file:faults.db"); }, nullptr},
    {"NameLikeAUriInMemory", "file:x?mode=memory", [] { makeDatabase("./file:x?mode=memory"); },
     nullptr},
    {"NameWithUriEscapes", "a%20b?c#d.db", [] { makeDatabase("./a%20b?c#d.db"); }, nullptr},
    {"EmptyPath", "", nothing, MISSING},
    {"MissingFile", "missing.db", nothing, MISSING},
    {"MissingFolder", "missing/faults.db", nothing, MISSING},
    {"MissingFileLikeAUri", "file:faults.db", [] { makeDatabase("faults.db"); }, MISSING},
    {"MissingFileLikeAUriInMemory", "file:x?mode=memory", nothing, MISSING},
    {"MissingFileLikeACreatingUri", "file:x?mode=rwc", nothing, MISSING},
    {"Folder", "folder", [] { fs::create_directory("folder"); }, NOT_REGULAR},
    {"PathThroughAFile", "faults.db/", [] { makeDatabase("faults.db"); }, "Not a directory"},
    {"Fifo", "fifo", [] { ASSERT_EQ(mkfifo("fifo", 0600), 0); }, NOT_REGULAR},
    {"Device", "/dev/null", nothing, NOT_REGULAR},
    {"LinkToADevice", "null", [] { fs::create_symlink("/dev/null", "null"); }, NOT_REGULAR},
    {"LinkToNothing", "link.db", [] { fs::create_symlink("missing.db", "link.db"); }, MISSING},
    {"LinkToItself", "link.db", [] { fs::create_symlink("link.db", "link.db"); },
     "Too many levels of symbolic links"},
    {"NulInTheName", std::string("faults.db\0x", 11), [] { makeDatabase("faults.db"); },
     NOT_REGULAR},
    {"NulAfterTheMemoryName", std::string(":memory:\0", 9), nothing, MISSING},
};

INSTANTIATE_TEST_SUITE_P(Paths, Sqlite3DbPathTest, testing::ValuesIn(PATH_CASES),
                         [](const auto& test) { return test.param.name; });

TEST_F(Sqlite3DbTest, NameLikeAUriIsReadFromTheFileOfThatName)
{
    for (const char* name : {"file:faults.db", "file:x?mode=memory"}) {
        makeDatabase(std::string("./") + name, ONE_FAULT);
        ASSERT_EQ(m_db.openDb(name, true), 0);
        const Table table(m_db, "SELECT code FROM fault_type_definition");
        ASSERT_EQ(table.rowCount, 1);
        EXPECT_STREQ(table.cells[1], "7");
        EXPECT_EQ(m_db.closeDb(), 0);
    }
}

TEST_F(Sqlite3DbTest, MemoryNameOpensAnEmptyDatabaseInMemory)
{
    ASSERT_EQ(m_db.openDb(":memory:", false), 0);
    EXPECT_EQ(m_db.path(), ":memory:");
    EXPECT_FALSE(m_db.isReadOnly());
    EXPECT_EQ(Table(m_db, "CREATE TABLE t(a)").code, 0);
    EXPECT_EQ(m_db.closeDb(), 0);
    EXPECT_EQ(m_db.openDb(":memory:", true), 0);
    EXPECT_EQ(Table(m_db, "SELECT * FROM t").code, 1);
    EXPECT_EQ(namesInDir(), std::vector<std::string>());
}

TEST_F(Sqlite3DbTest, MemoryNameIsNotReadFromAFileOfThatName)
{
    makeDatabase("./:memory:", ONE_FAULT);
    ASSERT_EQ(m_db.openDb(":memory:", true), 0);
    EXPECT_EQ(Table(m_db, "SELECT * FROM fault_type_definition").code, 1);
}

TEST_F(Sqlite3DbTest, ReadOnlyRefusesToWrite)
{
    makeDatabase("faults.db");
    const std::string before = contentOf("faults.db");
    ASSERT_EQ(m_db.openDb("faults.db", true), 0);
    const Table table(m_db, ONE_FAULT);
    EXPECT_EQ(table.code, 8);
    EXPECT_STREQ(table.errorText, "attempt to write a readonly database");
    EXPECT_EQ(m_db.closeDb(), 0);
    EXPECT_EQ(contentOf("faults.db"), before);
    EXPECT_EQ(namesInDir(), (std::vector<std::string>{"faults.db"}));
}

TEST_F(Sqlite3DbTest, ReadWriteWritesTheFile)
{
    makeDatabase("faults.db");
    ASSERT_EQ(m_db.openDb("faults.db", false), 0);
    EXPECT_EQ(Table(m_db, ONE_FAULT).code, 0);
    EXPECT_EQ(m_db.closeDb(), 0);
    ASSERT_EQ(m_db.openDb("faults.db", true), 0);
    const Table table(m_db, "SELECT alias FROM fault_type_definition");
    ASSERT_EQ(table.rowCount, 1);
    EXPECT_STREQ(table.cells[1], "A7");
}

TEST_F(Sqlite3DbTest, FileThatMayOnlyBeReadOpensReadOnlyForWriting)
{
    makeDatabase("faults.db");
    fs::permissions("faults.db", fs::perms::owner_read);
    const WithoutRootRights restricted;
    ASSERT_EQ(m_db.openDb("faults.db", false), 0);
    EXPECT_TRUE(m_db.isReadOnly());
    EXPECT_EQ(Table(m_db, ONE_FAULT).code, 8);
    EXPECT_EQ(m_db.closeDb(), 0);
    EXPECT_FALSE(m_db.isReadOnly());
}

TEST_F(Sqlite3DbTest, FileThatMayNotBeReadDoesNotOpen)
{
    makeDatabase("faults.db");
    fs::permissions("faults.db", fs::perms::none);
    const WithoutRootRights restricted;
    EXPECT_EQ(m_db.openDb("faults.db", true), -2);
    EXPECT_EQ(m_db.lastCode(), 14);
    EXPECT_EQ(m_db.lastErrorText(), "unable to open database file");
    expectClosed(m_db);
}

TEST_F(Sqlite3DbTest, FailingExtensionFailsTheOpeningAndClosesAgain)
{
    makeDatabase("faults.db");
    const OnOpen refuse = [](sqlite3*, char** errorText, const sqlite3_api_routines*) {
        *errorText = sqlite3_mprintf("refused");
        return SQLITE_ERROR;
    };
    addAutoExtension(refuse);
    const sqlite3_int64 before = sqlite3_memory_used();
    const int result = m_db.openDb("faults.db", true);
    const sqlite3_int64 after = sqlite3_memory_used();
    removeAutoExtension(refuse);

    EXPECT_EQ(result, -2);
    EXPECT_EQ(m_db.lastCode(), 1);
    EXPECT_EQ(m_db.lastErrorText(), "automatic extension loading failed: refused");
    EXPECT_EQ(after, before);
    expectClosed(m_db);

    EXPECT_EQ(m_db.openDb("faults.db", true), 0);
    EXPECT_EQ(m_db.lastCode(), 0);
    EXPECT_EQ(m_db.lastErrorText(), "");
}

TEST_F(Sqlite3DbTest, OpeningWithoutMemoryFails)
{
    makeDatabase("faults.db");
    {
        const NoSqliteMemory none;
        EXPECT_EQ(m_db.openDb("faults.db", true), -2);
    }
    EXPECT_EQ(m_db.lastCode(), 7);
    EXPECT_EQ(m_db.lastErrorText(), "out of memory");
    expectClosed(m_db);
    EXPECT_EQ(m_db.openDb("faults.db", true), 0);
}

TEST_F(Sqlite3DbTest, OpeningWhileOpenIsRefusedAndLeavesTheConnectionAlone)
{
    SqlTrace trace;
    makeDatabase("first.db", ONE_FAULT);
    makeDatabase("second.db");
    ASSERT_EQ(m_db.openDb("first.db", true), 0);
    sqlite3* const connection = trace.connection();

    EXPECT_EQ(m_db.openDb("second.db", false), -1);
    EXPECT_EQ(m_db.openDb("first.db", true), -1);
    EXPECT_EQ(m_db.openDb("missing.db", true), -1);

    EXPECT_EQ(trace.connection(), connection);
    EXPECT_EQ(trace.closed(), 2);  // those that made the databases
    EXPECT_EQ(m_db.m_dbState, 1);
    EXPECT_EQ(m_db.path(), "first.db");
    EXPECT_EQ(m_db.lastCode(), 0);
    EXPECT_TRUE(m_db.isReadOnly());
    const Table table(m_db, "SELECT code FROM fault_type_definition");
    EXPECT_EQ(table.rowCount, 1);
}

TEST_F(Sqlite3DbTest, ConnectionHasNoLockOfItsOwn)
{
    const SqlTrace trace;
    makeDatabase("faults.db");
    ASSERT_EQ(m_db.openDb("faults.db", true), 0);
    EXPECT_EQ(sqlite3_db_mutex(trace.connection()), nullptr);
}

TEST_F(Sqlite3DbTest, ReaderWaitsForAWriter)
{
    makeDatabase("faults.db");
    ASSERT_EQ(m_db.openDb("faults.db", true), 0);
    Sqlite3Db writer(0);
    ASSERT_EQ(writer.openDb("faults.db", false), 0);
    ASSERT_EQ(Table(writer, "BEGIN EXCLUSIVE").code, 0);
    ASSERT_EQ(Table(writer, ONE_FAULT).code, 0);

    std::thread committing([&writer] {
        std::this_thread::sleep_for(std::chrono::milliseconds(300));
        EXPECT_EQ(Table(writer, "COMMIT").code, 0);
    });
    const Table table(m_db, "SELECT code FROM fault_type_definition");
    committing.join();

    EXPECT_EQ(table.code, 0);
    EXPECT_EQ(table.rowCount, 1);
}

TEST_F(Sqlite3DbTest, ClosingWhenNothingIsOpenFails)
{
    EXPECT_EQ(m_db.closeDb(), -1);
    expectClosed(m_db);
    EXPECT_NE(m_db.openDb("missing.db", true), 0);
    EXPECT_EQ(m_db.closeDb(), -1);
}

TEST_F(Sqlite3DbTest, ClosingResetsTheConnectionForTheNextOpening)
{
    SqlTrace trace;
    makeDatabase("faults.db", ONE_FAULT);
    ASSERT_EQ(m_db.openDb("faults.db", true), 0);
    const int closedBefore = trace.closed();

    EXPECT_EQ(m_db.closeDb(), 0);
    EXPECT_EQ(trace.closed(), closedBefore + 1);
    EXPECT_EQ(m_db.lastCode(), 0);
    EXPECT_EQ(m_db.lastErrorText(), "");
    expectClosed(m_db);
    EXPECT_EQ(m_db.closeDb(), -1);

    EXPECT_EQ(m_db.openDb("faults.db", true), 0);
    EXPECT_EQ(Table(m_db, "SELECT * FROM fault_type_definition").rowCount, 1);
}

TEST_F(Sqlite3DbTest, CloseThatSqliteRefusesLeavesTheConnectionUsable)
{
    const SqlTrace trace;
    makeDatabase("faults.db", ONE_FAULT);
    ASSERT_EQ(m_db.openDb("faults.db", true), 0);
    sqlite3_stmt* statement = nullptr;
    ASSERT_EQ(sqlite3_prepare_v2(trace.connection(), "SELECT 1", -1, &statement, nullptr), 0);

    EXPECT_EQ(m_db.closeDb(), -2);
    EXPECT_EQ(m_db.lastCode(), 5);
    EXPECT_EQ(m_db.lastErrorText(),
              "unable to close due to unfinalized statements or unfinished backups");
    EXPECT_EQ(m_db.m_dbState, 1);
    EXPECT_EQ(m_db.path(), "faults.db");
    EXPECT_TRUE(m_db.isReadOnly());
    EXPECT_EQ(Table(m_db, "SELECT * FROM fault_type_definition").rowCount, 1);

    sqlite3_finalize(statement);
    EXPECT_EQ(m_db.closeDb(), 0);
    EXPECT_EQ(m_db.lastCode(), 0);
    EXPECT_EQ(m_db.lastErrorText(), "");
    expectClosed(m_db);
}

TEST_F(Sqlite3DbTest, DestructorClosesAnOpenDatabase)
{
    makeDatabase("faults.db");
    const SqlTrace trace;
    const CoutCapture capture;
    const sqlite3_int64 before = sqlite3_memory_used();
    {
        Sqlite3Db db(2);
        ASSERT_EQ(db.openDb("faults.db", true), 0);
        EXPECT_EQ(trace.closed(), 0);
    }
    EXPECT_EQ(trace.closed(), 1);
    EXPECT_EQ(sqlite3_memory_used(), before);
    EXPECT_EQ(capture.text(), "");
}

TEST_F(Sqlite3DbTest, DestructorOfAClosedConnectionClosesNothing)
{
    makeDatabase("faults.db");
    const SqlTrace trace;
    {
        const Sqlite3Db never(0);
        Sqlite3Db db(0);
        ASSERT_EQ(db.openDb("faults.db", true), 0);
        ASSERT_EQ(db.closeDb(), 0);
    }
    EXPECT_EQ(trace.closed(), 1);
}

TEST_F(Sqlite3DbTest, DestructorLeavesTheClosingToTheLastLivingStatement)
{
    makeDatabase("faults.db", ONE_FAULT);
    const SqlTrace trace;
    const sqlite3_int64 before = sqlite3_memory_used();
    sqlite3_stmt* statement = nullptr;
    {
        Sqlite3Db db(0);
        ASSERT_EQ(db.openDb("faults.db", true), 0);
        ASSERT_EQ(sqlite3_prepare_v2(trace.connection(), "SELECT code FROM fault_type_definition",
                                     -1, &statement, nullptr),
                  SQLITE_OK);
    }
    EXPECT_EQ(sqlite3_step(statement), SQLITE_ROW);
    EXPECT_EQ(sqlite3_column_int(statement, 0), 7);
    sqlite3_finalize(statement);
    EXPECT_EQ(sqlite3_memory_used(), before);
}

TEST_F(Sqlite3DbTest, DerivedConnectionClosesThroughItsBase)
{
    makeDatabase("faults.db");
    const SqlTrace trace;
    class Derived : public Sqlite3Db {
    public:
        Derived() : Sqlite3Db(0) {}
    };
    std::unique_ptr<Sqlite3Db> db(new Derived);
    ASSERT_EQ(db->openDb("faults.db", true), 0);
    db.reset();
    EXPECT_EQ(trace.closed(), 1);
}

TEST_F(Sqlite3DbTest, GetTableHandsOutNamesThenRows)
{
    makeDatabase("faults.db");
    ASSERT_EQ(m_db.openDb("faults.db", true), 0);
    const Table table(m_db,
                      "SELECT 4711 AS number, NULL AS missing, 'Tür' AS text, -0.5 AS fraction "
                      "UNION ALL SELECT 4294967296, '', 'x', NULL");
    ASSERT_EQ(table.code, 0);
    EXPECT_EQ(table.errorText, nullptr);
    EXPECT_EQ(table.rowCount, 2);
    EXPECT_EQ(table.columnCount, 4);
    const char* const expected[] = {"number", "missing", "text",       "fraction", "4711", nullptr,
                                    "Tür",    "-0.5",    "4294967296", "",         "x",    nullptr};
    for (std::size_t i = 0; i < std::size(expected); ++i) {
        EXPECT_STREQ(table.cells[i], expected[i]) << "entry " << i;
    }
}

TEST_F(Sqlite3DbTest, GetTableSucceedsWithoutRows)
{
    makeDatabase("faults.db");
    ASSERT_EQ(m_db.openDb("faults.db", true), 0);
    const Table table(m_db, "SELECT * FROM fault_type_definition");
    EXPECT_EQ(table.code, 0);
    EXPECT_EQ(table.errorText, nullptr);
    EXPECT_EQ(table.rowCount, 0);
    EXPECT_EQ(table.columnCount, 0);
}

TEST_F(Sqlite3DbTest, GetTableReportsAFailureWithCodeAndText)
{
    makeDatabase("faults.db");
    ASSERT_EQ(m_db.openDb("faults.db", true), 0);
    const CoutCapture capture;
    const Table table(m_db, "SELECT * FROM missing");
    EXPECT_EQ(table.code, 1);
    EXPECT_STREQ(table.errorText, "no such table: missing");
    EXPECT_EQ(table.cells, nullptr);
    EXPECT_EQ(capture.text(), "");
}

TEST_F(Sqlite3DbTest, GetTableWithoutMemoryLeavesTheErrorTextNull)
{
    makeDatabase("faults.db");
    ASSERT_EQ(m_db.openDb("faults.db", true), 0);
    const NoSqliteMemory none;
    const Table table(m_db, "SELECT 1");
    EXPECT_EQ(table.code, 7);
    EXPECT_EQ(table.errorText, nullptr);
}

TEST_F(Sqlite3DbTest, FileThatIsNoDatabaseOpensAndFailsAtTheFirstQuery)
{
    std::ofstream("notes.txt") << "This is a text, long enough to hold more than a file header of "
                                  "a hundred bytes, but nothing that SQLite could read.\n";
    ASSERT_EQ(m_db.openDb("notes.txt", true), 0);
    const Table table(m_db, "SELECT * FROM fault_type_definition");
    EXPECT_EQ(table.code, 26);
    EXPECT_STREQ(table.errorText, "file is not a database");
    EXPECT_EQ(m_db.closeDb(), 0);
}

TEST_F(Sqlite3DbTest, ConnectionsAreIndependentOfEachOther)
{
    makeDatabase("first.db", ONE_FAULT);
    makeDatabase("second.db");
    Sqlite3Db other(0);
    ASSERT_EQ(m_db.openDb("first.db", true), 0);
    ASSERT_EQ(other.openDb("second.db", false), 0);
    EXPECT_EQ(Table(m_db, "SELECT * FROM fault_type_definition").rowCount, 1);
    EXPECT_EQ(Table(other, "SELECT * FROM fault_type_definition").rowCount, 0);
    EXPECT_EQ(other.closeDb(), 0);
    EXPECT_EQ(Table(m_db, "SELECT * FROM fault_type_definition").rowCount, 1);
}

}  // namespace
