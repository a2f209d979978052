#pragma once

#include <string>

#include "support/database.h"

/// Makes a database file with a schema that SQLite would not make, or not in this time: statements
/// are put into the schema table as they are, unseen by SQLite.
class DatabaseMaker {
public:
    /// @param encoding  as of `PRAGMA encoding`.
    explicit DatabaseMaker(const std::string& file, const std::string& encoding = "UTF-8");

    /// Lets SQLite itself run SQL; on no view that was put in.
    void run(const std::string& sql);

    /// Both tables, as they should be, with two rows each.
    void addHonestTables();
    void addHonestFaultTypes();

    /// Puts a statement in.
    void put(const std::string& type, const std::string& name, const std::string& table,
             const std::string& statement);
    void putView(const std::string& name, const std::string& select);

    /// Puts a table in that has its page, without rows.
    void putTable(const std::string& name, const std::string& columns);

    /// Puts in views in the place of both tables.
    void putTargets(const std::string& select);

    /// Runs what was done so far, so that the file can be looked at.
    void finish();

private:
    OpenFile m_file;
};

/// @return the text as an SQL string.
std::string quoted(const std::string& text);

/// @return `count` times the text, with the separator between.
std::string repeated(const std::string& text, int count, const std::string& separator = "");

/// @return the text with each `#` in it replaced by a number, and each `@` by the number before.
std::string numbered(const std::string& text, int number);
