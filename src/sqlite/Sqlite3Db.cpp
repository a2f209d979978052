#include "zav/Sqlite3Db.h"

#include <sqlite3.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstring>
#include <memory>

#include "QueryBudget.h"
#include "hardening.h"
#include "hotJournal.h"
#include "logLine.h"
#include "zav/Descriptions.h"
#include "zav/FaultTypeDef.h"

namespace {

constexpr std::int32_t STATE_CLOSED = 0;
constexpr std::int32_t STATE_OPEN = 1;

/// How long a query waits for a writer in another process: far longer than an update of a database
/// of this size takes, short enough for an operator to see the failure.
constexpr int BUSY_TIMEOUT_MS = 5000;

/// A lookup without an index scans its table, and of a file larger than SQLite's own cache of 2 MB
/// each scan reads every page again. This many KiB hold any file whose ids fit their 16 bits: 65535
/// texts of 300 bytes each. A smaller file takes no more than its own size, since only pages that
/// have been read are kept. No mapping into memory: an I/O error there is a signal, not a code.
constexpr const char* ENLARGE_PAGE_CACHE = "PRAGMA cache_size=-20480";

/// @return why a path cannot name a database; empty if it can.
std::string refusalOf(const std::string& path)
{
    if (path == ":memory:") {
        return "";
    }
    struct stat status = {};
    if (stat(path.c_str(), &status) != 0) {
        return std::strerror(errno);
    }
    // A path with a NUL byte in it names another file to the system than to the caller.
    const bool isRegularFile = S_ISREG(status.st_mode) && path.find('\0') == std::string::npos;
    return isRegularFile ? "" : "not a regular file";
}

/// A path for SQLite, which may be built to take a name that begins with "file:" as a URI.
std::string plainPath(const std::string& path)
{
    return path.compare(0, 5, "file:") == 0 ? "./" + path : path;
}

}  // namespace

Sqlite3Db::Sqlite3Db(std::uint32_t dbgLevel) : m_dbgLevel(dbgLevel) {}

Sqlite3Db::~Sqlite3Db()
{
    sqlite3_close_v2(m_pDb);  // with a statement still alive, the last one closes the file
}

int Sqlite3Db::openDb(const std::string& path, bool readOnly)
{
    if (m_pDb != nullptr) {
        return -1;
    }
    const std::string refusal = refusalOf(path);
    if (!refusal.empty()) {
        return fail(SQLITE_CANTOPEN, refusal);
    }
    const int mode = readOnly ? SQLITE_OPEN_READONLY : SQLITE_OPEN_READWRITE;
    sqlite3* opened = nullptr;
    const int code =
        sqlite3_open_v2(plainPath(path).c_str(), &opened, mode | SQLITE_OPEN_NOMUTEX, nullptr);
    std::unique_ptr<sqlite3, decltype(&sqlite3_close)> db(opened, sqlite3_close);
    if (code != SQLITE_OK) {
        return fail(code, sqlite3_errmsg(db.get()));
    }
    const bool canOnlyRead = sqlite3_db_readonly(db.get(), "main") == 1;
    harden(db.get());
    if (canOnlyRead) {
        restrictToReading(db.get());
    }
    // Here and not only at the first query: rolling back takes as long as the update was large.
    readHeader(db.get());
    if (needsRollback(db.get())) {
        rollBack(db.get(), BUSY_TIMEOUT_MS);
    }
    // It reads the schema: of a file that cannot be read now, SQLite keeps its own cache.
    sqlite3_exec(db.get(), ENLARGE_PAGE_CACHE, nullptr, nullptr, nullptr);
    // Not earlier: a file that a writer has locked is left to the first query, which would not wait
    // if this first read had waited in vain.
    sqlite3_busy_timeout(db.get(), BUSY_TIMEOUT_MS);
    m_path = path;
    m_lastErrorText.clear();
    m_lastCode = SQLITE_OK;
    m_readOnly = canOnlyRead;
    m_pDb = db.release();
    m_dbState = STATE_OPEN;
    return 0;
}

int Sqlite3Db::closeDb()
{
    if (m_pDb == nullptr) {
        return -1;
    }
    const int code = sqlite3_close(m_pDb);
    if (code != SQLITE_OK) {
        return fail(code, sqlite3_errmsg(m_pDb));
    }
    m_pDb = nullptr;
    m_path.clear();
    m_lastErrorText.clear();
    m_lastCode = SQLITE_OK;
    m_readOnly = false;
    m_dbState = STATE_CLOSED;
    return 0;
}

int Sqlite3Db::getTable(const std::string& sql, char*** result, int* rowCount, int* columnCount,
                        char** errorText) const
{
    if (m_pDb == nullptr) {
        return SQLITE_MISUSE;
    }
    const auto runQuery = [&] {
        return sqlite3_get_table(m_pDb, sql.c_str(), result, rowCount, columnCount, errorText);
    };
    if (!m_readOnly) {
        return runQuery();
    }
    const QueryBudget budget(m_pDb);
    const int code = runQuery();
    if (!needsRollback(m_pDb)) {
        return code;
    }
    // A writer has died since the file was opened.
    sqlite3_free(*errorText);
    rollBack(m_pDb, BUSY_TIMEOUT_MS);
    return runQuery();
}

int Sqlite3Db::fail(std::int32_t code, const std::string& errorText)
{
    m_lastCode = code;
    m_lastErrorText = errorText;
    return -2;
}

// Whoever takes the connection out of its open state while a query runs takes over the query's
// memory with it.

int Sqlite3Db::failQuery(char* errorText, int code) const
{
    // A failed query without an error text silences standard output: the text is written untested.
    LogUtil::writeLine(LogUtil::ERROR_PREFIX, LogUtil::ACCESS_LAYER_TAG, "getTbl",
                       "Sql Query failed: ", errorText, " Err=", std::to_string(code));
    if (m_dbState == STATE_OPEN) {
        sqlite3_free(errorText);
    }
    return -2;
}

void Sqlite3Db::finishQuery(char** result) const
{
    if (m_dbState == STATE_OPEN) {
        sqlite3_free_table(result);
    }
    if (m_dbgLevel > 1) {
        LogUtil::writeLine(LogUtil::DEBUG_PREFIX, LogUtil::ACCESS_LAYER_TAG, "getTbl", "Done");
    }
}

template int Sqlite3Db::getTbl<FaultTypeDef, FaultTypeDef>(const std::string& query,
                                                           std::vector<FaultTypeDef>& records,
                                                           SqlTbl<FaultTypeDef>* table);
template int Sqlite3Db::getTbl<Descriptions, Descriptions>(const std::string& query,
                                                           std::vector<Descriptions>& records,
                                                           SqlTbl<Descriptions>* table);
