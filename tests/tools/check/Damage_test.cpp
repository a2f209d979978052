#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <sstream>

#include "support/database.h"
#include "tools/ZavCommand.h"

namespace {

const std::string CLEAN =
    "INSERT INTO fault_type_definition VALUES(1,'a','b',0,0);"
    "INSERT INTO descriptions VALUES(1,1,1,'n','s','d','c','r');";

CommandResult inFolder(const ZavCommand& zav, const std::string& line)
{
    return zav.shell("cd " + zav.file("") + "; " + line);
}

TEST(Unreadable, IsWhateverSqliteCannotReadTheSchemaOf)
{
    struct Case {
        std::string make;
        std::string words;
    };
    const std::string notOpened = "unable to open database file";
    const std::string notDatabase = "file is not a database";
    const Case cases[] = {
        {"true", notOpened},
        {"mkdir bad.db", notOpened},
        {"ln -s nowhere.db bad.db", notOpened},
        {"mkfifo bad.db", notOpened},
        {"touch bad.db", "the file is empty"},
        {"printf '%2000s' x >bad.db", notDatabase},
        {"head -c 50 faults.db >bad.db", "database disk image is malformed"},
        {"cp faults.db bad.db; printf XX | dd of=bad.db conv=notrunc status=none", notDatabase},
        {"cp faults.db bad.db; printf XX | dd of=bad.db bs=1 seek=100 conv=notrunc status=none",
         "database disk image is malformed"},
        {"sqlite3 bad.db 'CREATE TABLE t(a); PRAGMA writable_schema=ON; "
         "UPDATE sqlite_master SET sql=1'",
         "malformed database schema (t)"},
    };
    for (const Case& row : cases) {
        const ZavCommand zav;
        zav.database(CLEAN);
        ASSERT_EQ(inFolder(zav, row.make).status, 0) << row.make;
        for (const std::string options :
             {"", "--all", "--ignore unreadable", "--only null", "--fail-on error"}) {
            const CommandResult result = inFolder(zav, "zav check bad.db " + options);
            EXPECT_EQ(result.output, "bad.db: error: cannot be read: " + row.words +
                                         " [unreadable]\nbad.db: 1 error\n")
                << row.make << ' ' << options;
            EXPECT_EQ(result.errors, "") << row.make;
            EXPECT_EQ(result.status, 3) << row.make << ' ' << options;
        }
    }
}

TEST(Unreadable, IsAFileInMemory)
{
    const ZavCommand zav;
    EXPECT_EQ(zav.run("check :memory:").status, 3);
    EXPECT_EQ(zav.run("check 'file::memory:'").status, 3);
}

constexpr std::size_t PAGE_SIZE = 1024;

/// A database with a page of every kind: the tables and the index have several levels, some texts
/// are longer than a page, and some pages are free.
std::string largeDatabase(const ZavCommand& zav)
{
    const std::string file = zav.file("faults.db");
    runSql(file, "PRAGMA page_size=" + std::to_string(PAGE_SIZE) + ";VACUUM;");
    runSql(file, schemaSql());
    runSql(file,
           "CREATE TABLE old(a); INSERT INTO old VALUES(zeroblob(20000));"
           "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM n WHERE i<400) "
           "INSERT INTO fault_type_definition SELECT i,'ALIAS_'||i,'error',0,i FROM n;"
           "INSERT INTO descriptions SELECT code,code,1,'name '||code,'short '||code,"
           "  'description '||code||hex(zeroblob(iif(code%100,20,1500))),'c','r' "
           "FROM fault_type_definition; DROP TABLE old;");
    return file;
}

/// What the library answers: the whole tables, and the texts of some codes, by the index.
std::string answers(const ZavCommand& zav, const std::string& file)
{
    return zav
        .shell("{ zav faults --format csv " + file + "; zav texts --format csv " + file +
               "; for code in 1 7 57 133 200 283 340 400; do zav texts --format csv --code $code " +
               file + "; zav fault --format csv " + file + " $code; done; } 2>&1")
        .output;
}

/// The texts of each code that the index delivers, in one list.
std::string byIndex(const ZavCommand& zav, const std::string& file)
{
    return zav
        .shell("sqlite3 -readonly " + file +
               " 'SELECT * FROM descriptions INDEXED BY descriptions_id_fault_type "
               "WHERE id_fault_type>=0 ORDER BY id_fault_type' 2>&1")
        .output;
}

std::string byScan(const ZavCommand& zav, const std::string& file)
{
    return zav
        .shell("sqlite3 -readonly " + file +
               " 'SELECT * FROM descriptions NOT INDEXED ORDER BY id_fault_type' 2>&1")
        .output;
}

/// The pages of a kind, by SQLite's own account of them; counted from 1.
std::vector<std::size_t> pagesOf(const ZavCommand& zav, const std::string& file,
                                 const std::string& condition)
{
    std::istringstream numbers(
        zav.shell("sqlite3 " + file + " \"SELECT pageno FROM dbstat WHERE " + condition + "\"")
            .output);
    std::vector<std::size_t> pages;
    for (std::size_t page = 0; numbers >> page;) {
        pages.push_back(page);
    }
    return pages;
}

struct PageKind {
    std::string name;
    std::string condition;  ///< on SQLite's virtual table "dbstat"
};

const PageKind PAGE_KINDS[] = {
    {"TableLeaf", "name='descriptions' AND pagetype='leaf'"},
    {"TableInterior", "name='descriptions' AND pagetype='internal'"},
    {"FaultTableLeaf", "name='fault_type_definition' AND pagetype='leaf'"},
    {"IndexLeaf", "name='descriptions_id_fault_type' AND pagetype='leaf'"},
    {"IndexInterior", "name='descriptions_id_fault_type' AND pagetype='internal'"},
    {"Overflow", "pagetype='overflow'"},
};

std::ostream& operator<<(std::ostream& stream, const PageKind& kind)
{
    return stream << kind.name;
}

/// Never calls a file clean whose queries fail, or whose index answers otherwise than a scan.
void expectNoFalsePraise(const ZavCommand& zav, const std::string& file, const std::string& damage)
{
    const CommandResult check = zav.run("check " + file);
    ASSERT_NE(check.status, -1) << damage;
    if (check.status != 0) {
        return;
    }
    EXPECT_EQ(answers(zav, file).find("ERROR"), std::string::npos) << damage;
    EXPECT_EQ(byIndex(zav, file), byScan(zav, file)) << damage;
}

class DamagedPage : public testing::TestWithParam<PageKind> {};

TEST_P(DamagedPage, IsNeverCalledClean)
{
    const ZavCommand zav;
    const std::string file = largeDatabase(zav);
    const std::string whole = contents(file);
    ASSERT_EQ(zav.run("check " + file).output, file + ": no findings\n");
    const std::vector<std::size_t> pages = pagesOf(zav, file, GetParam().condition);
    ASSERT_FALSE(pages.empty());
    const std::size_t start = (pages[pages.size() / 2] - 1) * PAGE_SIZE;
    for (const std::size_t offset :
         {std::size_t{0}, std::size_t{1}, std::size_t{3}, std::size_t{5}, std::size_t{9},
          std::size_t{13}, PAGE_SIZE / 2, PAGE_SIZE - 7, PAGE_SIZE - 2}) {
        for (const char flipped : {'\x01', '\x80'}) {
            std::string damaged = whole;
            damaged[start + offset] = static_cast<char>(damaged[start + offset] ^ flipped);
            setContents(file, damaged);
            expectNoFalsePraise(zav, file, "offset " + std::to_string(offset));
        }
    }
    std::string wiped = whole;
    std::fill_n(wiped.begin() + static_cast<std::ptrdiff_t>(start), PAGE_SIZE, '\0');
    setContents(file, wiped);
    expectNoFalsePraise(zav, file, "wiped");
}

INSTANTIATE_TEST_SUITE_P(Check, DamagedPage, testing::ValuesIn(PAGE_KINDS),
                         [](const auto& suite) { return suite.param.name; });

TEST(Damaged, IsAFileWithAWrongListOfFreePages)
{
    const ZavCommand zav;
    const std::string file = largeDatabase(zav);
    constexpr std::size_t FIRST_FREE_PAGE = 35;  // the last byte of its number in the header
    std::string damaged = contents(file);
    ASSERT_NE(damaged[FIRST_FREE_PAGE], 0);
    damaged[FIRST_FREE_PAGE] = 3;
    setContents(file, damaged);
    const CommandResult result = zav.run("check " + file);
    EXPECT_NE(result.output.find("SQLite's integrity check says so"), std::string::npos);
    EXPECT_EQ(result.status, 1);
}

TEST(Damaged, IsAFileWithADamagedPageOfFreePages)
{
    const ZavCommand zav;
    const std::string file = largeDatabase(zav);
    const std::string whole = contents(file);
    constexpr std::size_t FIRST_FREE_PAGE = 35;  // the last byte of its number in the header
    constexpr std::size_t NEXT = 3;              // the last bytes of the numbers in that page
    constexpr std::size_t COUNT = 7;
    constexpr std::size_t FIRST_LEAF = 11;
    const std::size_t start =
        (static_cast<unsigned char>(whole[FIRST_FREE_PAGE]) - std::size_t{1}) * PAGE_SIZE;
    for (const std::size_t offset : {NEXT, COUNT, FIRST_LEAF}) {
        std::string damaged = whole;
        damaged[start + offset] = static_cast<char>(damaged[start + offset] ^ 0x03);
        setContents(file, damaged);
        EXPECT_EQ(zav.run("check --only damaged " + file).status, 1) << offset;
    }
}

TEST(Damaged, IsAFileWithAnyByteOfItsHeaderChangedOrElseItsQueriesWork)
{
    const ZavCommand zav;
    const std::string file = largeDatabase(zav);
    const std::string whole = contents(file);
    constexpr std::size_t HEADER_SIZE = 100;
    for (std::size_t offset = 0; offset < HEADER_SIZE; offset += 3) {
        std::string damaged = whole;
        damaged[offset] = static_cast<char>(damaged[offset] ^ 0x05);
        setContents(file, damaged);
        expectNoFalsePraise(zav, file, "header offset " + std::to_string(offset));
    }
}

TEST(Damaged, QuotesSqlitesWords)
{
    const ZavCommand zav;
    zav.database(CLEAN);
    ASSERT_EQ(inFolder(zav,
                       "sqlite3 faults.db 'PRAGMA writable_schema=ON; UPDATE sqlite_master SET "
                       "rootpage=(SELECT rootpage FROM sqlite_master WHERE name=\"descriptions\") "
                       "WHERE name=\"descriptions_id_fault_type\"'")
                  .status,
              0);
    const CommandResult result = inFolder(zav, "zav check --only damaged --all faults.db");
    EXPECT_NE(result.output.find("faults.db: error: \""), std::string::npos) << result.output;
    EXPECT_NE(
        result.output.find("\": SQLite's integrity check says so; make the file anew from its "
                           "source [damaged]\n"),
        std::string::npos)
        << result.output;
    EXPECT_EQ(result.output.find("***"), std::string::npos) << result.output;
    EXPECT_EQ(result.status, 1);
}

/// The rows of the table go to one number, and those of the index to another.
TEST(Damaged, IsAnIndexThatAnswersOtherwiseThanAScan)
{
    const ZavCommand zav;
    const std::string file = zav.database(
        "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM n WHERE i<9) "
        "INSERT INTO fault_type_definition SELECT i,'alias'||i,'b',0,0 FROM n;"
        "INSERT INTO descriptions SELECT code,code,1,'n'||code,'s','d','c','r' "
        "FROM fault_type_definition;");
    runSql(file,
           "PRAGMA writable_schema=ON; UPDATE sqlite_master SET sql='CREATE INDEX "
           "descriptions_id_fault_type ON descriptions (id_language)' WHERE type='index'");
    runSql(file, "UPDATE descriptions SET id_fault_type=10-id_fault_type WHERE id<3");
    runSql(file,
           "PRAGMA writable_schema=ON; UPDATE sqlite_master SET sql='CREATE INDEX "
           "descriptions_id_fault_type ON descriptions (id_fault_type)' WHERE type='index'");
    const CommandResult result = zav.shell("zav check --all --only damaged " + file +
                                           " | grep -c 'finds other rows by the index'");
    EXPECT_EQ(result.output, "4\n");
}

TEST(Damaged, IsATableThatCannotBeReadToItsEnd)
{
    const ZavCommand zav;
    const std::string file = largeDatabase(zav);
    const std::vector<std::size_t> pages =
        pagesOf(zav, file, "name='descriptions' AND pagetype='leaf'");
    std::string damaged = contents(file);
    damaged[(pages.back() - 1) * PAGE_SIZE] = 0;
    setContents(file, damaged);
    const CommandResult result = zav.run("check --all " + file);
    EXPECT_NE(
        result.output.find("descriptions: error: \"database disk image is malformed\": cannot be "
                           "read to its end; make the file anew from its source [damaged]\n"),
        std::string::npos)
        << result.output;
    EXPECT_EQ(result.output.find("missing-text"), std::string::npos) << result.output;
}

/// Makes the table as its first two columns alone, so that nothing is computed yet.
std::string tableWith(const std::string& furtherColumns)
{
    return "CREATE TABLE descriptions(id, id_fault_type);"
           "INSERT INTO descriptions VALUES(1,1),(2,2); PRAGMA writable_schema=ON;"
           "UPDATE sqlite_master SET sql='CREATE TABLE descriptions(id, id_fault_type, " +
           furtherColumns + ")' WHERE name='descriptions'";
}

/// A text that doubles from column to column.
std::string doublingColumns(int count)
{
    std::string columns = "c0 AS (''x'')";
    for (int i = 1; i < count; ++i) {
        const std::string before = "c" + std::to_string(i - 1);
        columns += ", c" + std::to_string(i);
        columns += " AS (" + before + "||" + before + ")";
    }
    return columns;
}

/// A view over a view and so on, each of which reads the one below it twice.
std::string viewChain(int height)
{
    std::string sql = "CREATE VIEW v0 AS SELECT 1 AS id, 2 AS id_fault_type;";
    for (int i = 1; i <= height; ++i) {
        const std::string below = "v" + std::to_string(i - 1);
        sql += "CREATE VIEW v" + std::to_string(i) + " AS SELECT a.* FROM " + below + " a, " +
               below + " b;";
    }
    return sql + "CREATE VIEW descriptions AS SELECT * FROM v" + std::to_string(height);
}

struct Hostile {
    std::string name;
    std::string sql;
};

std::ostream& operator<<(std::ostream& stream, const Hostile& file)
{
    return stream << file.name;
}

const Hostile HOSTILE[] = {
    {"ViewWithoutEndOfRows",
     "CREATE VIEW descriptions AS WITH RECURSIVE n(i) AS "
     "(SELECT 1 UNION ALL SELECT i+1 FROM n) SELECT i AS id, i AS id_fault_type FROM n"},
    {"ViewWithoutEndOfNoRows",
     "CREATE VIEW descriptions AS WITH RECURSIVE n(i) AS "
     "(SELECT 1 UNION ALL SELECT i+1 FROM n) SELECT i AS id, i AS id_fault_type FROM n WHERE i<0"},
    {"ViewOfItself", "CREATE VIEW descriptions AS SELECT * FROM descriptions"},
    {"DoublingColumns", tableWith(doublingColumns(60))},
    {"DoublingViews", viewChain(40)},
    {"OneStepThatTakesHours",
     tableWith("name AS (instr(hex(zeroblob(8000000)),hex(zeroblob(4000000))||''1''))")},
    {"IndexOfWhatTakesHours",
     "CREATE TABLE descriptions(id, id_fault_type);"
     "CREATE TABLE other(a); CREATE INDEX i ON "
     "other(instr(hex(zeroblob(a)),hex(zeroblob(a/2))||'1'));"
     "INSERT INTO other VALUES(1); PRAGMA writable_schema=ON;"
     "UPDATE sqlite_master SET sql=replace(sql,'zeroblob(a','zeroblob(a*8000000') WHERE name='i'"},
};

class HostileFile : public testing::TestWithParam<Hostile> {};

TEST_P(HostileFile, EndsAndIsCalledDamaged)
{
    const ZavCommand zav;
    const std::string file = zav.database("DROP TABLE descriptions;" + GetParam().sql);
    const CommandResult result = zav.run("check --only damaged --only missing-table " + file);
    EXPECT_EQ(result.status, 1) << result.output;
}

INSTANTIATE_TEST_SUITE_P(Check, HostileFile, testing::ValuesIn(HOSTILE),
                         [](const auto& suite) { return suite.param.name; });

/// Copies a database with its journal while a transaction of many pages is open, as its writer
/// would leave it by dying.
const std::string DIE =
    "sqlite3 faults.db 'PRAGMA cache_size=1' BEGIN "
    "'UPDATE descriptions SET remedy=hex(zeroblob(9000))' "
    "'.shell for file in faults.db*; do cp $file dead-$file; done' ROLLBACK >/dev/null;"
    "for file in dead-*; do mv $file ${file#dead-}; done";

const std::string WAL_MODE =
    "faults.db: warning: the file is in WAL mode: every query fails on a read-only medium, or "
    "without the right to write to the folder; run PRAGMA journal_mode=DELETE before shipping, and "
    "take a -wal file beside it as part of the data [wal-mode]\n";

std::string journalFile(const std::string& name)
{
    return "faults.db: warning: \"" + name +
           "\": the journal lies beside the file: SQLite applies it, and without the right to "
           "write "
           "every query may fail; run VACUUM before shipping, which leaves no journal "
           "[journal-file]\n";
}

TEST(Journals, AreFoundAsTheyWereBefore)
{
    struct State {
        std::string commands;
        std::string findings;
    };
    const std::string wal = "sqlite3 faults.db 'PRAGMA journal_mode=WAL' >/dev/null;";
    const State states[] = {
        {"true", ""},
        {wal, WAL_MODE},
        {wal + DIE, WAL_MODE},
        {wal + "touch faults.db-journal", WAL_MODE + journalFile("faults.db-journal")},
        {DIE, journalFile("faults.db-journal")},
        {"touch faults.db-journal", journalFile("faults.db-journal")},
        {"cp faults.db old.db;" + wal + DIE + "; mv old.db faults.db; rm -f faults.db-shm",
         journalFile("faults.db-wal")},
        {"mkdir real; mv faults.db real; touch real/faults.db-journal; ln -s real/faults.db .",
         journalFile("faults.db-journal")},
    };
    for (const State& row : states) {
        const ZavCommand zav;
        zav.database(CLEAN);
        ASSERT_EQ(inFolder(zav, row.commands).status, 0) << row.commands;
        const CommandResult result = inFolder(zav, "zav check faults.db");
        EXPECT_EQ(result.output.substr(0, result.output.rfind("faults.db: ")), row.findings)
            << row.commands;
        EXPECT_EQ(result.errors, "") << row.commands;
        EXPECT_EQ(result.status, row.findings.empty() ? 0 : 1) << row.commands;
        const std::string advice = "sqlite3 faults.db 'PRAGMA journal_mode=DELETE; VACUUM' >&2;";
        EXPECT_EQ(inFolder(zav, advice + "zav check faults.db").output, "faults.db: no findings\n")
            << row.commands;
    }
}

}  // namespace
