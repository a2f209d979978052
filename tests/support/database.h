#pragma once

#include <string>

struct sqlite3;

/// A database file open for writing, which is created if it is missing. Throws std::runtime_error
/// with SQLite's text on a failure.
class OpenFile {
public:
    explicit OpenFile(const std::string& file);
    ~OpenFile();
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;

    void run(const std::string& sql);

private:
    std::string m_file;
    sqlite3* m_db = nullptr;
};

/// Runs SQL on a database file that is opened for it; see OpenFile.
void runSql(const std::string& file, const std::string& sql);

/// The `CREATE` statements of both tables, from db/schema.sql.
std::string schemaSql();

/// Makes a database file with both tables, then runs further SQL on it.
/// @return the file's path, as passed.
std::string makeDatabase(const std::string& file, const std::string& furtherSql = "");

/// @return all bytes of a file.
std::string contents(const std::string& file);

/// Replaces a file's bytes, or makes the file.
void setContents(const std::string& file, const std::string& bytes);
