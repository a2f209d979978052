#include "ReadGuard.h"

#include <utility>

#include "../execute.h"
#include "../pageCache.h"
#include "QueryBudget.h"
#include "databaseSize.h"
#include "hardening.h"
#include "stackLeft.h"

namespace {

/// How often another process may change the schema under a query.
constexpr int MOST_RUNS = 5;

/// To compile a query without code of the file.
constexpr std::size_t STACK_FOR_ANY_QUERY = 2560;

/// Name of a collation that owns the guard: SQLite destroys it with its connection, after the files
/// are closed. No query compares by it.
constexpr const char* OWNER = "zav";

int compare(void* /*guard*/, int /*length*/, const void* /*text*/, int /*otherLength*/,
            const void* /*otherText*/)
{
    return 0;
}

int fail(int code, char* text, char** errorText)
{
    sqlite3_free(std::exchange(*errorText, text));
    return code;
}

int fail(int code, char** errorText)
{
    return fail(code, sqlite3_mprintf("%s", sqlite3_errstr(code)), errorText);
}

int refuse(const char* what, char** errorText)
{
    return fail(SQLITE_ERROR, sqlite3_mprintf("%s is too complex", what), errorText);
}

int addStatement(void* fileCode, int /*columns*/, char** row, char** /*names*/)
{
    if (*row != nullptr) {  // the index of a key has no statement
        static_cast<FileCode*>(fileCode)->add(*row);
    }
    return 0;
}

int schemaSize(sqlite3* db)
{
    int size = 0;
    int unused = 0;
    sqlite3_db_status(db, SQLITE_DBSTATUS_SCHEMA_USED, &size, &unused, 0);
    return size;
}

}  // namespace

int ReadGuard::open(const char* path, sqlite3** db, char** errorText) noexcept
{
    auto* const guard = new ReadGuard;
    if (guard == nullptr) {
        return SQLITE_NOMEM;
    }
    constexpr int FLAGS = SQLITE_OPEN_READONLY | SQLITE_OPEN_NOMUTEX;
    int code = guard->CompanionVfs::open(path, FLAGS, db);
    if (code == SQLITE_OK) {
        code = sqlite3_create_collation_v2(*db, OWNER, SQLITE_UTF8, guard, compare, destroy);
    }
    if (code != SQLITE_OK) {
        fail(code, sqlite3_mprintf("%s", sqlite3_errmsg(*db)), errorText);
        sqlite3_close(std::exchange(*db, nullptr));
        destroy(guard);
    }
    return code;
}

void ReadGuard::destroy(void* guard)
{
    delete static_cast<ReadGuard*>(guard);
}

void ReadGuard::start(sqlite3* db) noexcept
{
    m_db = db;
    restrictToReading(db);
    sqlite3_set_authorizer(db, authorize, this);
    const QueryBudget budget(db);
    char* errorText = nullptr;
    readSchema(&errorText);
    if (HotJournal::blocks(db)) {
        // Here and not only at the first query, since a large update takes long to roll back. It
        // does not wait for others.
        m_hotJournal.rollBack(db, 0);
        readSchema(&errorText);
    }
    sqlite3_free(errorText);
}

int ReadGuard::getTable(const char* sql, const Table& table, int busyTimeoutMs) noexcept
{
    QueryBudget budget(m_db);
    const int code = run(sql, table, budget);
    if (!HotJournal::blocks(m_db)) {
        return code;
    }
    // A writer has died since the file was opened.
    const bool isLocked = m_hotJournal.rollBack(m_db, busyTimeoutMs);
    const int codeAfterwards = run(sql, table, budget);
    return isLocked && HotJournal::blocks(m_db) ? fail(SQLITE_BUSY, table.errorText)
                                                : codeAfterwards;
}

/// Runs a text on no other schema than the one that it was checked against.
int ReadGuard::run(const char* sql, const Table& table, QueryBudget& budget)
{
    for (int runs = 0; runs < MOST_RUNS; ++runs) {
        m_hasLostSchema = false;
        int code = m_schemaSize > 0 ? SQLITE_OK : readSchema(table.errorText);
        if (code == SQLITE_OK) {
            code = runChecked(sql, table, budget);
        }
        if (!m_hasLostSchema) {
            return code;
        }
        m_schemaSize = 0;
    }
    return fail(SQLITE_SCHEMA, table.errorText);
}

int ReadGuard::runChecked(const char* sql, const Table& table, QueryBudget& budget)
{
    CompileCost cost;
    const bool isTooMuch = m_fileCode.isTooMuch(sql, cost);
    if (!m_fileCode.hadMemory()) {
        return fail(SQLITE_NOMEM, table.errorText);
    }
    if (isTooMuch) {
        return refuse("the query", table.errorText);
    }
    limitQuery(m_db);
    if (cost.nodes > 0) {
        const std::size_t stack = stackLeft();
        const std::size_t needed = cost.stackBytes + STACK_FOR_ANY_QUERY;
        if (needed > stack) {
            return fail(SQLITE_ERROR, sqlite3_mprintf("too little stack for the query"),
                        table.errorText);
        }
        limitTexts(m_db, databaseSize(m_db), stack - needed);
        if (m_fileCode.takesPart()) {
            limitFileCode(m_db);
            budget.lookOften();
        }
    }
    return runWithin(budget, sql, table, m_fileCode.takesPart());
}

int ReadGuard::runWithin(QueryBudget& budget, const char* sql, const Table& table,
                         bool withFileCode)
{
    for (;;) {
        const int code = runNow(sql, table);
        if (!budget.wasEndedForMemoryOfAll()) {
            return code;
        }
        budget.countResult(withFileCode);
    }
}

int ReadGuard::runNow(const char* sql, const Table& table)
{
    sqlite3_free(std::exchange(*table.errorText, nullptr));
    return sqlite3_get_table(m_db, sql, table.result, table.rowCount, table.columnCount,
                             table.errorText);
}

int ReadGuard::readSchema(char** errorText)
{
    sqlite3_free(std::exchange(*errorText, nullptr));
    m_readsSchema = true;
    int code = hasUsualStack() ? readUsualSchema() : SQLITE_CORRUPT;
    if (code == SQLITE_CORRUPT || code == SQLITE_TOOBIG || code == SQLITE_NOMEM) {
        code = readUnusualSchema(errorText);
    }
    m_readsSchema = false;
    if (code == SQLITE_OK) {
        enlargePageCache(m_db);
        m_schemaSize = schemaSize(m_db);
    } else if (code == SQLITE_NOMEM) {
        fail(code, errorText);  // what SQLite has to say need not be about it
    } else if (*errorText == nullptr) {
        *errorText = sqlite3_mprintf("%s", sqlite3_errmsg(m_db));
    }
    return code;
}

int ReadGuard::readUsualSchema()
{
    limitToUsualSchema(m_db);
    return readStatements();
}

/// Looks at the statements before SQLite compiles any of them.
int ReadGuard::readUnusualSchema(char** errorText)
{
    const int code = lookAtStatements();
    if (code != SQLITE_OK && code != SQLITE_CORRUPT) {
        return code;
    }
    forgetSchema();
    if (code == SQLITE_CORRUPT) {
        return readUsualSchema();  // fails in SQLite's usual words
    }
    for (const char* statistics : {"sqlite_stat1", "sqlite_stat4"}) {
        if (m_fileCode.has(statistics)) {
            return refuse(statistics, errorText);
        }
    }
    const std::size_t depth = schemaDepth(stackLeft());
    if (m_fileCode.mostCollations() > depth) {
        return refuse("the schema", errorText);
    }
    limitSchema(m_db, depth);
    return readStatements();
}

int ReadGuard::lookAtStatements()
{
    forgetSchema();
    const PassingOverSchema passing(m_db);
    return readStatements();
}

/// The next statement makes SQLite read it again.
void ReadGuard::forgetSchema()
{
    execute(m_db, "PRAGMA writable_schema=RESET");
}

int ReadGuard::readStatements()
{
    m_fileCode.clear();
    const int code =
        sqlite3_exec(m_db, "SELECT sql FROM sqlite_master", addStatement, &m_fileCode, nullptr);
    m_fileCode.finish();
    return m_fileCode.hadMemory() ? code : SQLITE_NOMEM;
}

int ReadGuard::authorize(void* guard, int action, const char* /*first*/, const char* /*second*/,
                         const char* /*schema*/, const char* /*view*/)
{
    ReadGuard& self = *static_cast<ReadGuard*>(guard);
    const bool beginsStatement =
        action != SQLITE_READ && action != SQLITE_FUNCTION && action != SQLITE_RECURSIVE;
    // Asked before SQLite reads the schema of a statement: another process has changed it.
    self.m_hasLostSchema =
        beginsStatement && !self.m_readsSchema && schemaSize(self.m_db) < self.m_schemaSize;
    return self.m_hasLostSchema ? SQLITE_DENY : SQLITE_OK;
}
