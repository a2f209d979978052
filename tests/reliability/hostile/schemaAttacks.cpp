#include "Attack.h"
#include "support/DatabaseMaker.h"

namespace {

std::string doublingColumns(const std::string& first, const std::string& last, int count)
{
    std::string columns = first;
    for (int i = 1; i <= count; ++i) {
        columns += numbered(i > 1 ? ", c# AS (c@ || c@)" : ", c1 AS (" + first + ")", i);
    }
    return columns + ", " + last + " AS (c" + std::to_string(count) + ")";
}

/// The tables, and SQLite's statistics in a table of another kind.
void makeStatistics(const std::string& file, const std::string& name, const std::string& columns)
{
    DatabaseMaker maker(file);
    maker.addHonestTables();
    maker.run("ANALYZE");
    maker.run(
        "UPDATE sqlite_master SET sql = " + quoted("CREATE TABLE " + name + "(" + columns + ")") +
        " WHERE name = " + quoted("sqlite_stat1"));
    if (name != "sqlite_stat1") {
        maker.run("UPDATE sqlite_master SET name = " + quoted(name) +
                  ", tbl_name = " + quoted(name) + " WHERE name = 'sqlite_stat1'");
    }
    maker.finish();
}

/// A row of the schema in which something is not as it should be, beside the tables.
void makeRow(const std::string& file, const std::string& values)
{
    DatabaseMaker maker(file);
    maker.addHonestTables();
    maker.run("INSERT INTO sqlite_master VALUES (" + values + ")");
    maker.finish();
}

/// Both tables as views over a long text that costs nothing to compile.
void makeLongRest(const std::string& file, const std::string& rest, int mentions)
{
    DatabaseMaker maker(file);
    maker.putView("w", "SELECT x " + rest + " FROM t");
    maker.putView("v", "SELECT 1 AS x FROM w WHERE x IN (" +
                           repeated("(SELECT x FROM w)", mentions, ",") + ")");
    maker.putTargets("SELECT a.x FROM v a" + repeated(", v", 20));
    maker.finish();
}

}  // namespace

Attacks schemaAttacks()
{
    return {
        {"statistics that double",
         {4, 10, 13, 25},
         [](const std::string& file, int n) {
             makeStatistics(file, "sqlite_stat1",
                            doublingColumns("tbl", "idx", n) + ", stat AS (c1)");
         }},
        {"statistics of 16 columns",
         {64, 1000},
         [](const std::string& file, int n) {
             std::string columns = "tbl, c0 AS (tbl || tbl)";
             for (int i = 1; i < 11; ++i) {
                 columns +=
                     numbered(", c# AS (max(" + repeated("c@", n > 120 ? 120 : n, ",") + "))", i);
             }
             makeStatistics(file, "sqlite_stat1", columns + ", idx AS (c10), stat AS (c10)");
         }},
        {"statistics [4] that double",
         {10, 13, 25},
         [](const std::string& file, int n) {
             makeStatistics(file, "sqlite_stat4",
                            doublingColumns("tbl", "idx", n) +
                                ", neq AS (c1), nlt AS (c1), ndlt AS (c1), sample AS (c1)");
         }},
        {"deep statistics",
         {4, 90, 900},
         [](const std::string& file, int n) {
             makeStatistics(file, "sqlite_stat1",
                            "tbl, idx AS (" + repeated("tbl", n, "||") + "), stat AS (tbl)");
         }},
        {"statistics by functions",
         {1, 3},
         [](const std::string& file, int n) {
             makeStatistics(file, "sqlite_stat1",
                            "tbl, idx AS (" + repeated("hex(", n) + "zeroblob(900000)" +
                                repeated(")", n) +
                                "), stat AS (trim(hex(zeroblob(200000)), "
                                "replace(hex(zeroblob(90000)), '0', 'abc') || '0'))");
         }},
        {"statistics of many rows",
         {1000, 100000, 1000000},
         [](const std::string& file, int n) {
             DatabaseMaker maker(file);
             maker.addHonestTables();
             maker.run(
                 "ANALYZE; INSERT INTO sqlite_stat1 WITH RECURSIVE n(i) AS (SELECT 1 UNION "
                 "ALL SELECT i + 1 FROM n) SELECT 'descriptions', "
                 "'descriptions_id_fault_type', i FROM n LIMIT " +
                 std::to_string(n));
             maker.finish();
         }},
        {"statistics of long texts",
         {100000, 8000000},
         [](const std::string& file, int n) {
             DatabaseMaker maker(file);
             maker.addHonestTables();
             maker.run("ANALYZE; UPDATE sqlite_stat1 SET stat = replace(hex(zeroblob(" +
                       std::to_string(n / 2) + ")), '0', '9 ')");
             maker.finish();
         }},
        {"a row of another type",
         {1},
         [](const std::string& file, int) {
             makeRow(file, "'table', 'v', 'v', 0, 'CREATE VIEW v AS SELECT 1'");
         }},
        {"a row of another name",
         {1},
         [](const std::string& file, int) {
             makeRow(file, "'view', 'w', 'w', 0, 'CREATE VIEW v AS SELECT 1'");
         }},
        {"a row of no type",
         {1},
         [](const std::string& file, int) {
             makeRow(file, "NULL, NULL, NULL, NULL, 'CREATE VIEW v AS SELECT 1'");
         }},
        {"a row with a blob",
         {1},
         [](const std::string& file, int) {
             makeRow(file, "x'00', x'ff00', 4.5, 'x', CAST('CREATE VIEW v AS SELECT 1' AS BLOB)");
         }},
        {"a row of the schema table itself",
         {1},
         [](const std::string& file, int) {
             makeRow(file,
                     "'table', 'sqlite_master', 'sqlite_master', 1, 'CREATE TABLE "
                     "sqlite_master(type, name, tbl_name, rootpage, sql AS (type))'");
         }},
        {"a temporary schema table",
         {1},
         [](const std::string& file, int) {
             makeRow(file,
                     "'view', 'sqlite_schema', 'sqlite_schema', 0, 'CREATE TEMP VIEW "
                     "sqlite_schema AS SELECT NULL AS sql'");
         }},
        {"a table in the schema's page",
         {1},
         [](const std::string& file, int) {
             DatabaseMaker maker(file);
             maker.run(
                 "INSERT INTO sqlite_master VALUES ('table', 'descriptions', 'descriptions', "
                 "1, 'CREATE TABLE descriptions(id, name)')");
             maker.finish();
         }},
        {"tables in one page",
         {100, 10000},
         [](const std::string& file, int n) {
             DatabaseMaker maker(file);
             maker.addHonestTables();
             for (int i = 0; i < n; ++i) {
                 maker.run(
                     numbered("INSERT INTO sqlite_master VALUES ('table', 'o#', 'o#', 2, "
                              "'CREATE TABLE o#(x, y AS (x || x))')",
                              i));
             }
             maker.finish();
         }},
        {"rows of the schema without a statement",
         {1000, 100000},
         [](const std::string& file, int n) {
             DatabaseMaker maker(file);
             maker.addHonestTables();
             maker.run(
                 "INSERT INTO sqlite_master WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT "
                 "i + 1 FROM n) SELECT 'index', 'x' || i, 'descriptions', 3, NULL FROM n "
                 "LIMIT " +
                 std::to_string(n));
             maker.finish();
         }},
        {"a statement of one long comment",
         {200000, 15000000},
         [](const std::string& file, int n) {
             DatabaseMaker maker(file);
             maker.putTargets("SELECT 1 /*" + std::string(static_cast<std::size_t>(n), '*') + "*/");
             maker.finish();
         }},
        {"long comments in views that are named often",
         {100, 2000},
         [](const std::string& file, int n) {
             makeLongRest(file, "/*" + std::string(200000, ' ') + "*/", n);
         }},
        {"long strings in views that are named often",
         {100, 2000},
         [](const std::string& file, int n) {
             makeLongRest(file, ", '" + std::string(200000, ' ') + "' AS y", n);
         }},
        {"space in views that are named often",
         {100, 2000},
         [](const std::string& file, int n) { makeLongRest(file, std::string(200000, ' '), n); }},
        {"local names by thousands, one mentioned often",
         {1000, 15000},
         [](const std::string& file, int n) {
             DatabaseMaker maker(file);
             for (int i = 0; i < n; ++i) {
                 maker.putView(numbered("o#", i), "WITH a AS (SELECT 1) SELECT 1");
             }
             maker.putTargets("SELECT x FROM t AS a WHERE 1 IN (" + repeated("a.x", 50000, ",") +
                              ") AND 1 IN (" + repeated("a", 100000, ",") + ")");
             maker.finish();
         }},
        {"names by thousands in subqueries",
         {1000, 20000},
         [](const std::string& file, int n) {
             std::string list = "0";
             for (int i = 0; i < n; ++i) {
                 list += numbered(", x#", i);
             }
             DatabaseMaker maker(file);
             maker.putTargets("SELECT x FROM t WHERE " + repeated("1 IN (SELECT 1 WHERE ", 20) +
                              "1 IN (" + list + ")" + repeated(")", 20));
             maker.finish();
         }},
        {"parentheses without end",
         {90, 100000},
         [](const std::string& file, int n) {
             DatabaseMaker maker(file);
             maker.putTargets("SELECT " + repeated("(SELECT ", n) + "1" + repeated(")", n));
             maker.finish();
         }},
        {"definitions without end",
         {40, 20000},
         [](const std::string& file, int n) {
             DatabaseMaker maker(file);
             maker.putTargets(repeated("WITH a AS (", n) + "SELECT 1" +
                              repeated(") SELECT * FROM a", n));
             maker.finish();
         }},
    };
}
