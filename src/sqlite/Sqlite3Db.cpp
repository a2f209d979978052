#include "zav/Sqlite3Db.h"

#include <sqlite3.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstring>
#include <memory>
#include <string_view>
#include <utility>

#include "logLine.h"
#include "pageCache.h"
#include "safety/ReadGuard.h"
#include "safety/SqliteMemory.h"
#include "safety/hardening.h"
#include "zav/Descriptions.h"
#include "zav/FaultTypeDef.h"

namespace {

constexpr std::int32_t STATE_CLOSED = 0;
constexpr std::int32_t STATE_OPEN = 1;

/// How long a query waits for a writer in another process: far longer than an update of a database
/// of this size takes, short enough for an operator to see the failure.
constexpr int BUSY_TIMEOUT_MS = 5000;

/// What SQLite takes for the name of a database in memory, which is empty and can be written.
constexpr const char* MEMORY = ":memory:";

/// @return why a path cannot name a database file; null if it can.
const char* refusalOf(const std::string& path)
{
    struct stat status;
    if (stat(path.c_str(), &status) != 0) {
        return std::strerror(errno);
    }
    // A path with a NUL byte in it names another file to the system than to the caller.
    const bool isRegularFile = S_ISREG(status.st_mode) && std::strlen(path.c_str()) == path.size();
    return isRegularFile ? nullptr : "not a regular file";
}

/// A path for SQLite, which may be built to take a name that begins with "file:" as a URI.
SqliteText plainPath(const std::string& path)
{
    const bool looksLikeUri = sqlite3_strnicmp(path.c_str(), "file:", 5) == 0;
    return SqliteText(sqlite3_mprintf("%s%s", looksLikeUri ? "./" : "", path.c_str()));
}

/// See ReadGuard::open().
int openForWriting(const char* path, sqlite3** db, char** errorText) noexcept
{
    const int code =
        sqlite3_open_v2(path, db, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr);
    if (code != SQLITE_OK) {
        *errorText = sqlite3_mprintf("%s", sqlite3_errmsg(*db));
        sqlite3_close(std::exchange(*db, nullptr));
    }
    return code;
}

}  // namespace

Sqlite3Db::Sqlite3Db(std::uint32_t dbgLevel) : m_dbgLevel(dbgLevel) {}

Sqlite3Db::~Sqlite3Db()
{
    sqlite3_close_v2(m_pDb);  // the last statement that is still alive closes the file
}

int Sqlite3Db::openDb(const std::string& path, bool readOnly)
{
    if (m_pDb != nullptr) {
        return -1;
    }
    const bool isFile = std::string_view(path) != MEMORY;
    const char* const refusal = isFile ? refusalOf(path) : nullptr;
    if (refusal != nullptr) {
        return fail(SQLITE_CANTOPEN, refusal);
    }
    m_path = path;  // it may throw, which nothing that follows a successful opening does
    const SqliteText name = plainPath(path);
    const auto open = readOnly && isFile ? ReadGuard::open : openForWriting;
    sqlite3* opened = nullptr;
    char* errorText = nullptr;
    int code = name == nullptr ? SQLITE_NOMEM : open(name.get(), &opened, &errorText);
    if (code == SQLITE_OK && isFile && !readOnly && sqlite3_db_readonly(opened, "main") == 1) {
        sqlite3_close(opened);
        code = ReadGuard::open(name.get(), &opened, &errorText);
    }
    if (code != SQLITE_OK) {
        m_path.clear();
        const SqliteText text(errorText);
        return fail(code, errorText != nullptr ? errorText : sqlite3_errstr(code));
    }
    harden(opened);
    ReadGuard* const guard = ReadGuard::of(opened);
    if (guard != nullptr) {
        guard->start(opened);
    } else {
        enlargePageCache(opened);
    }
    // Not earlier: a file that a writer has locked is left to the first query, which would not wait
    // if this first read had waited in vain.
    sqlite3_busy_timeout(opened, BUSY_TIMEOUT_MS);
    m_lastErrorText.clear();
    m_lastCode = SQLITE_OK;
    m_readOnly = guard != nullptr;
    m_pDb = opened;
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
    if (ReadGuard* const guard = ReadGuard::of(m_pDb)) {
        return guard->getTable(sql.c_str(), {result, rowCount, columnCount, errorText},
                               BUSY_TIMEOUT_MS);
    }
    return sqlite3_get_table(m_pDb, sql.c_str(), result, rowCount, columnCount, errorText);
}

int Sqlite3Db::fail(std::int32_t code, const char* errorText)
{
    m_lastCode = code;
    m_lastErrorText = errorText;
    return -2;
}

// Whoever takes the connection out of its open state while a query runs takes over the query's
// memory with it.

int Sqlite3Db::failQuery(char* errorText, int code) const
{
    char number[12] = "";  // as it is, whatever format the application has set
    sqlite3_snprintf(sizeof number, number, "%d", code);
    // A failed query without an error text silences standard output: the text is written untested.
    LogUtil::writeLine(LogUtil::ERROR_PREFIX, LogUtil::ACCESS_LAYER_TAG, "getTbl",
                       "Sql Query failed: ", errorText, " Err=", number);
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
