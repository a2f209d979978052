#include "ReplacedDatabase.h"

#include <sqlite3.h>

#include <filesystem>
#include <fstream>
#include <memory>

#include "database/DatabaseErrors.h"
#include "database/Journals.h"
#include "sqlite/safety/hardening.h"
#include "text/formatted.h"

namespace {

namespace fs = std::filesystem;

bool isThere(const std::string& file)
{
    std::error_code error;
    return fs::symlink_status(file, error).type() != fs::file_type::not_found;
}

void remove(const std::string& file)
{
    std::error_code error;
    fs::remove(file, error);
    if (error) {
        throw RefusedReplacement(formatted("{}: cannot be removed: {}", file, error.message()));
    }
}

/// @return whether SQLite would apply a journal: one that it has done with is gone, empty or begins
///         with zeros.
bool isInForce(const std::string& journal)
{
    std::ifstream stream(journal, std::ios::binary);
    const int first = stream.get();
    return stream.good() && first != 0;
}

/// By SQLite's file format: the journal of a transaction on several files ends with the name of the
/// super-journal, of which these bytes are the end.
bool namesSuperJournal(const std::string& journal)
{
    constexpr std::string_view MAGIC("\xd9\xd5\x05\xf9\x20\xa1\x63\xd7", 8);
    std::ifstream stream(journal, std::ios::binary);
    stream.seekg(-static_cast<std::streamoff>(MAGIC.size()), std::ios::end);
    std::string end(MAGIC.size(), '\0');
    return stream.read(end.data(), static_cast<std::streamsize>(end.size())) && end == MAGIC;
}

/// @return whether the file is no database, or a damaged one.
bool isDamage(int code)
{
    return code == SQLITE_CORRUPT || code == SQLITE_NOTADB ||
           code == SQLITE_ERROR;  // an unknown format
}

}  // namespace

bool ReplacedDatabase::exists() const
{
    return isThere(m_file);
}

void ReplacedDatabase::settle()
{
    refuseSuperJournal();
    if (exists()) {
        m_isDamaged =
            !run("PRAGMA schema_version", Patience());  // SQLite rolls back before it reads
    }
}

void ReplacedDatabase::hold()
{
    const Patience patience;
    while (exists() && !tryToHold(patience)) {
        if (!patience.wait()) {
            throw RefusedReplacement(m_file + ": is in use; others keep writing to it");
        }
    }
    refuseSuperJournal();
    removeJournals();
}

/// @return false if another writer came, and died, between settle() and the lock.
bool ReplacedDatabase::tryToHold(const Patience& patience)
{
    using Lock = LockedFile::Lock;
    m_lock.reset();
    settle();
    leaveWalMode(patience);
    m_lock.emplace(m_file, m_isDamaged ? Lock::AGAINST_ALL : Lock::AGAINST_WRITERS, patience);
    return m_isDamaged || !(isInForce(m_file + JOURNAL_SUFFIX) || isThere(m_file + WAL_SUFFIX) ||
                            m_lock->isInWalMode());
}

/// @return false if the file is damaged.
bool ReplacedDatabase::run(const char* sql, const Patience& patience) const
{
    sqlite3* opened = nullptr;
    const int openCode = sqlite3_open_v2(fs::absolute(m_file).c_str(), &opened,
                                         SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr);
    const std::unique_ptr<sqlite3, decltype(&sqlite3_close)> db(opened, sqlite3_close);
    int code = openCode;
    if (openCode == SQLITE_OK) {
        harden(db.get());
        do {
            code = sqlite3_exec(db.get(), sql, nullptr, nullptr, nullptr);
        } while (code == SQLITE_BUSY && patience.wait());
    }
    if (code == SQLITE_BUSY) {
        throw RefusedReplacement(m_file + ": is in use: " + sqlite3_errmsg(db.get()));
    }
    if (code != SQLITE_OK && !isDamage(code)) {
        throw RefusedReplacement(m_file + ": " + sqlite3_errmsg(db.get()));
    }
    return code == SQLITE_OK;
}

/// SQLite takes a -wal file for a part of any database that it lies beside.
void ReplacedDatabase::leaveWalMode(const Patience& patience)
{
    if (journalsOf(m_file).isWalMode || isThere(m_file + WAL_SUFFIX)) {
        m_isDamaged = !run("PRAGMA journal_mode=DELETE", patience) || m_isDamaged;
    }
}

void ReplacedDatabase::refuseSuperJournal() const
{
    const std::string journal = m_file + JOURNAL_SUFFIX;
    if (isInForce(journal) && namesSuperJournal(journal)) {
        throw RefusedReplacement(
            journal +
            ": belongs to a transaction on several databases; let its program open them first");
    }
}

void ReplacedDatabase::removeJournals() const
{
    for (const char* suffix : FILE_SUFFIXES) {
        remove(m_file + suffix);
    }
}
