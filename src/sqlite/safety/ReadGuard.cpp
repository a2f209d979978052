#include "ReadGuard.h"

#include <memory>
#include <utility>
#include <vector>

#include "../pageCache.h"
#include "QueryBudget.h"
#include "databaseSize.h"
#include "hardening.h"
#include "stackLeft.h"

namespace {

/// How often another process may change the schema under a query.
constexpr int MOST_RUNS = 5;

constexpr const char* TOO_COMPLEX = " is too complex";

/// To compile a query without code of the file.
constexpr std::size_t STACK_FOR_ANY_QUERY = 2560;

int fail(int code, const std::string& text, char** errorText)
{
    sqlite3_free(*errorText);
    *errorText = sqlite3_mprintf("%s", text.c_str());
    return code;
}

int schemaSize(sqlite3* db)
{
    int size = 0;
    int unused = 0;
    sqlite3_db_status(db, SQLITE_DBSTATUS_SCHEMA_USED, &size, &unused, 0);
    return size;
}

}  // namespace

int ReadGuard::open(const std::string& path, sqlite3** db, std::string& errorText)
{
    constexpr int FLAGS = SQLITE_OPEN_READONLY | SQLITE_OPEN_NOMUTEX;
    std::unique_ptr<ReadGuard> guard(new ReadGuard);
    int code = guard->CompanionVfs::open(path, FLAGS, db);
    if (code == SQLITE_OK && guard->shmHasSecondLink()) {
        sqlite3_close(*db);
        code = guard->reopenWithoutWritingShm(FLAGS, db);
    }
    if (code == SQLITE_OK) {
        guard.release();  // goes with the connection
    } else {
        errorText = sqlite3_errmsg(*db);
        sqlite3_close(std::exchange(*db, nullptr));
    }
    return code;
}

int ReadGuard::close(sqlite3* db)
{
    std::unique_ptr<ReadGuard> guard(of(db));
    const int code = sqlite3_close(db);
    if (code != SQLITE_OK) {
        guard.release();
    }
    return code;
}

void ReadGuard::start(sqlite3* db)
{
    m_db = db;
    restrictToReading(db);
    sqlite3_set_authorizer(db, authorize, this);
    const QueryBudget budget(db);
    readSchema();
    if (HotJournal::blocks(db)) {
        // Here and not only at the first query: it takes as long as the update was large. Nobody is
        // waited for.
        m_hotJournal.rollBack(db, 0);
        readSchema();
    }
}

int ReadGuard::getTable(const std::string& sql, char*** result, int* rowCount, int* columnCount,
                        char** errorText, int busyTimeoutMs)
{
    const Table table = {result, rowCount, columnCount, errorText};
    QueryBudget budget(m_db);
    const int code = run(sql, table, budget);
    if (!HotJournal::blocks(m_db)) {
        return code;
    }
    // A writer has died since the file was opened.
    const bool isLocked = m_hotJournal.rollBack(m_db, busyTimeoutMs);
    const int codeAfterwards = run(sql, table, budget);
    return isLocked && HotJournal::blocks(m_db) ? fail(SQLITE_BUSY, "database is locked", errorText)
                                                : codeAfterwards;
}

/// Runs a text on no other schema than the one that it was checked against.
int ReadGuard::run(const std::string& sql, const Table& table, QueryBudget& budget)
{
    for (int runs = 0; runs < MOST_RUNS; ++runs) {
        m_hasLostSchema = false;
        const Failure unreadable = m_schemaSize > 0 ? Failure() : readSchema();
        if (unreadable.code != SQLITE_OK) {
            return fail(unreadable.code, unreadable.text, table.errorText);
        }
        const int code = runChecked(sql, table, budget);
        if (!m_hasLostSchema) {
            return code;
        }
        m_schemaSize = 0;
    }
    return fail(SQLITE_SCHEMA, sqlite3_errstr(SQLITE_SCHEMA), table.errorText);
}

int ReadGuard::runChecked(const std::string& sql, const Table& table, QueryBudget& budget)
{
    CompileCost cost;
    const SqlToken tooMuch = m_fileCode.tooMuchIn(sql, cost);
    if (tooMuch.kind != SqlToken::END) {
        return fail(SQLITE_ERROR, std::string(tooMuch.text, tooMuch.length) + TOO_COMPLEX,
                    table.errorText);
    }
    if (cost.nodes == 0) {
        limitQuery(m_db);
        return runWithin(budget, sql, table, false);
    }
    const std::size_t stack = stackLeft();
    if (cost.stackBytes + STACK_FOR_ANY_QUERY > std::uint64_t{stack}) {
        return fail(SQLITE_ERROR, "too little stack for the views of this query", table.errorText);
    }
    limitQueryWithFileCode(m_db, databaseSize(m_db),
                           stack - static_cast<std::size_t>(cost.stackBytes));
    budget.lookOften();
    return runWithin(budget, sql, table, true);
}

int ReadGuard::runWithin(QueryBudget& budget, const std::string& sql, const Table& table,
                         bool withFileCode)
{
    const auto runNow = [&] {
        sqlite3_free(std::exchange(*table.errorText, nullptr));
        return sqlite3_get_table(m_db, sql.c_str(), table.result, table.rowCount, table.columnCount,
                                 table.errorText);
    };
    const int code = runNow();
    if (!budget.wasEndedForMemoryOfAll()) {
        return code;
    }
    budget.countResult(withFileCode);
    return runNow();
}

ReadGuard::Failure ReadGuard::readSchema()
{
    m_readsSchema = true;
    Failure failure = hasUsualStack() ? readUsualSchema() : readUnusualSchema();
    if (failure.code == SQLITE_CORRUPT || failure.code == SQLITE_TOOBIG ||
        failure.code == SQLITE_NOMEM) {
        failure = readUnusualSchema();
    }
    if (failure.code == SQLITE_OK) {
        enlargePageCache(m_db);
        m_schemaSize = schemaSize(m_db);
    }
    m_readsSchema = false;
    return failure;
}

ReadGuard::Failure ReadGuard::readUsualSchema()
{
    limitToUsualSchema(m_db);
    return readStatements();
}

/// Looks at the statements before SQLite compiles any of them.
ReadGuard::Failure ReadGuard::readUnusualSchema()
{
    if (lookAtStatements().code != SQLITE_OK) {
        return readUsualSchema();  // damaged: it fails with SQLite's usual words
    }
    for (const char* statistics : {"sqlite_stat1", "sqlite_stat4"}) {
        if (m_fileCode.has(statistics)) {
            return {SQLITE_ERROR, std::string(statistics) + TOO_COMPLEX};
        }
    }
    limitSchema(m_db, stackLeft());
    return readStatements();
}

ReadGuard::Failure ReadGuard::lookAtStatements()
{
    forgetSchema();
    const PassingOverSchema passing(m_db);
    Failure failure = readStatements();
    forgetSchema();
    return failure;
}
/// The next statement makes SQLite read it again.
void ReadGuard::forgetSchema()
{
    sqlite3_exec(m_db, "PRAGMA writable_schema=RESET", nullptr, nullptr, nullptr);
}

ReadGuard::Failure ReadGuard::readStatements()
{
    sqlite3_stmt* prepared = nullptr;
    int code = sqlite3_prepare_v2(m_db, "SELECT sql FROM sqlite_master", -1, &prepared, nullptr);
    const std::unique_ptr<sqlite3_stmt, decltype(&sqlite3_finalize)> rows(prepared,
                                                                          sqlite3_finalize);
    std::vector<std::string> statements;
    while (code == SQLITE_OK || code == SQLITE_ROW) {
        code = sqlite3_step(rows.get());
        const auto* const text = reinterpret_cast<const char*>(sqlite3_column_text(rows.get(), 0));
        if (code == SQLITE_ROW && text != nullptr) {  // the index of a key has no statement
            statements.emplace_back(text);
        }
    }
    if (code != SQLITE_DONE) {
        return {code, sqlite3_errmsg(m_db)};
    }
    m_fileCode.read(std::move(statements));
    return {};
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
