#include "support/DatabaseMaker.h"

DatabaseMaker::DatabaseMaker(const std::string& file, const std::string& encoding) : m_file(file)
{
    m_file.run(
        "PRAGMA journal_mode=OFF; PRAGMA synchronous=OFF; PRAGMA encoding=" + quoted(encoding) +
        "; CREATE TABLE t(x); INSERT INTO t VALUES (1), (2);"
        "PRAGMA writable_schema=ON; BEGIN;");
}

void DatabaseMaker::run(const std::string& sql)
{
    m_file.run(sql);
}

void DatabaseMaker::addHonestFaultTypes()
{
    const std::string schema = schemaSql();
    m_file.run(schema.substr(0, schema.find(';') + 1) +
               "INSERT INTO fault_type_definition VALUES (17, 'E017', 'error', 3, 5),"
               "(18, 'E018', 'warning', 0, 1)");
}

void DatabaseMaker::addHonestTables()
{
    addHonestFaultTypes();
    const std::string schema = schemaSql();
    m_file.run(schema.substr(schema.find(';') + 1) +
               "INSERT INTO descriptions VALUES (1, 17, 2, 'Overheat', 'Too hot', 'x', 'y', 'z'),"
               "(2, 18, 3, 'Trop chaud', 'a', 'b', 'c', 'd')");
}

void DatabaseMaker::put(const std::string& type, const std::string& name, const std::string& table,
                        const std::string& statement)
{
    m_file.run("INSERT INTO sqlite_master VALUES (" + quoted(type) + ", " + quoted(name) + ", " +
               quoted(table) + ", 0, " + quoted(statement) + ")");
}

void DatabaseMaker::putView(const std::string& name, const std::string& select)
{
    put("view", name, name, "CREATE VIEW " + name + " AS " + select);
}

void DatabaseMaker::putTable(const std::string& name, const std::string& columns)
{
    m_file.run("CREATE TABLE " + name + "(x)");
    m_file.run(
        "UPDATE sqlite_master SET sql = " + quoted("CREATE TABLE " + name + "(" + columns + ")") +
        " WHERE name = " + quoted(name));
}

void DatabaseMaker::putTargets(const std::string& select)
{
    putView("fault_type_definition", select);
    putView("descriptions", select);
}

void DatabaseMaker::finish()
{
    m_file.run("COMMIT");
}

std::string quoted(const std::string& text)
{
    std::string result = "'";
    for (const char letter : text) {
        result += letter;
        if (letter == '\'') {
            result += letter;
        }
    }
    return result + "'";
}

std::string repeated(const std::string& text, int count, const std::string& separator)
{
    std::string result;
    for (int i = 0; i < count; ++i) {
        result += (i > 0 ? separator : "") + text;
    }
    return result;
}

std::string numbered(const std::string& text, int number)
{
    std::string result;
    for (const char letter : text) {
        if (letter == '#') {
            result += std::to_string(number);
        } else if (letter == '@') {
            result += std::to_string(number - 1);
        } else {
            result += letter;
        }
    }
    return result;
}
