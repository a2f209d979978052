#include "support/database.h"

#include <sqlite3.h>

#include <fstream>
#include <iterator>
#include <stdexcept>

namespace {
constexpr int PATIENCE_MS = 60000;  // for as long as the tested readers may keep it waiting
}

OpenFile::OpenFile(const std::string& file) : m_file(file)
{
    if (sqlite3_open(file.c_str(), &m_db) != SQLITE_OK) {
        const std::string errorText = sqlite3_errmsg(m_db);
        sqlite3_close(m_db);
        throw std::runtime_error(file + ": " + errorText);
    }
    sqlite3_busy_timeout(m_db, PATIENCE_MS);
}

OpenFile::~OpenFile()
{
    sqlite3_close(m_db);
}

void OpenFile::run(const std::string& sql)
{
    if (sqlite3_exec(m_db, sql.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK) {
        throw std::runtime_error(m_file + ": " + sqlite3_errmsg(m_db) + " in: " + sql);
    }
}

void runSql(const std::string& file, const std::string& sql)
{
    OpenFile(file).run(sql);
}

std::string schemaSql()
{
    return contents(ZAV_SOURCE_DIR "/db/schema.sql");
}

std::string makeDatabase(const std::string& file, const std::string& furtherSql)
{
    runSql(file, "BEGIN;" + schemaSql() + furtherSql + ";COMMIT;");
    return file;
}

std::string contents(const std::string& file)
{
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

void setContents(const std::string& file, const std::string& bytes)
{
    std::ofstream stream(file, std::ios::binary);
    stream << bytes;
}
