#include "Attack.h"
#include "support/DatabaseMaker.h"

namespace {

void makeOne(const std::string& file, const std::string& select)
{
    DatabaseMaker maker(file);
    maker.putTargets(
        "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n), m(i) AS (SELECT i FROM n "
        "LIMIT 5000) " +
        select);
    maker.finish();
}

}  // namespace

Attacks endlessAttacks()
{
    return {
        {"rows without end",
         {1},
         [](const std::string& file, int) { makeOne(file, "SELECT i, i, i FROM n"); }},
        {"no row, and no end",
         {1},
         [](const std::string& file, int) { makeOne(file, "SELECT i FROM n WHERE i < 0"); }},
        {"no row of distinct ones",
         {1},
         [](const std::string& file, int) {
             makeOne(file, "SELECT DISTINCT i % 7 FROM n WHERE i > 9 LIMIT -1 OFFSET 100");
         }},
        {"distinct rows without end",
         {1},
         [](const std::string& file, int) {
             makeOne(file, "SELECT count(*) FROM (SELECT DISTINCT i FROM n)");
         }},
        {"rows to sort",
         {1000, 100000, 1000000, 3000000},
         [](const std::string& file, int n) {
             makeOne(file, "SELECT i FROM (SELECT i FROM n LIMIT " + std::to_string(n) +
                               ") ORDER BY i * 7919 % 1000003, -i");
         }},
        {"rows to sort by texts",
         {1000, 10000, 100000},
         [](const std::string& file, int n) {
             makeOne(file, "SELECT i FROM (SELECT i FROM n LIMIT " + std::to_string(n) +
                               ") ORDER BY hex(zeroblob(500)) || i % 7919 COLLATE nocase");
         }},
        {"rows to sort without end",
         {1},
         [](const std::string& file, int) { makeOne(file, "SELECT i FROM n ORDER BY -i"); }},
        {"rows to sort in a queue",
         {1},
         [](const std::string& file, int) {
             makeOne(file,
                     "SELECT count(*) FROM (WITH RECURSIVE q(i) AS (SELECT 1 UNION ALL SELECT "
                     "i + 1 FROM q UNION ALL SELECT i + 2 FROM q ORDER BY 1 DESC) SELECT i "
                     "FROM q)");
         }},
        {"rows of a breadth without end",
         {1},
         [](const std::string& file, int) {
             makeOne(file,
                     "SELECT count(*) FROM (WITH RECURSIVE q(i) AS (SELECT 1 UNION ALL SELECT "
                     "i + 1 FROM q UNION ALL SELECT i + 2 FROM q) SELECT i FROM q)");
         }},
        {"texts in one without end",
         {1},
         [](const std::string& file, int) { makeOne(file, "SELECT group_concat(i) FROM n"); }},
        {"groups without end",
         {1},
         [](const std::string& file, int) {
             makeOne(file, "SELECT count(*), max(i), group_concat(i) FROM n GROUP BY i % 9999");
         }},
        {"windows without end",
         {1},
         [](const std::string& file, int) {
             makeOne(file,
                     "SELECT sum(i) OVER (ORDER BY i ROWS BETWEEN UNBOUNDED PRECEDING AND "
                     "UNBOUNDED FOLLOWING) FROM n");
         }},
        {"windows over many rows",
         {1},
         [](const std::string& file, int) {
             makeOne(file,
                     "SELECT max(j) FROM (SELECT group_concat(i) OVER (ORDER BY i ROWS "
                     "BETWEEN 3000 PRECEDING AND 3000 FOLLOWING EXCLUDE TIES) AS j FROM m)");
         }},
        {"cross joins",
         {1},
         [](const std::string& file, int) {
             makeOne(file, "SELECT max(a.i + b.i + c.i) FROM m a, m b, m c");
         }},
        {"cross joins of the schema",
         {1},
         [](const std::string& file, int) {
             makeOne(file, "SELECT count(a.sql) FROM " +
                               repeated("sqlite_master a, sqlite_master", 1) +
                               repeated(", sqlite_master", 30));
         }},
        {"cross joins without a row",
         {1},
         [](const std::string& file, int) {
             makeOne(file, "SELECT 1 FROM t" + repeated(", t", 40) + " WHERE random() = 0.5");
         }},
        {"subqueries in each row",
         {1},
         [](const std::string& file, int) {
             makeOne(file,
                     "SELECT (SELECT max(b.i * a.i) FROM m b WHERE (SELECT count(*) FROM m c WHERE "
                     "c.i < b.i + a.i) > 0) FROM m a");
         }},
        {"an index of rows without end",
         {1},
         [](const std::string& file, int) {
             makeOne(file, "SELECT count(*) FROM m JOIN n ON n.i = -m.i");
         }},
        {"elements of IN without end",
         {1},
         [](const std::string& file, int) {
             makeOne(file, "SELECT x FROM t WHERE -x IN (SELECT i FROM n)");
         }},
        {"a UNION without end",
         {1},
         [](const std::string& file, int) {
             makeOne(file, "SELECT i FROM n UNION SELECT -i FROM n");
         }},
        {"an EXCEPT without end",
         {1},
         [](const std::string& file, int) {
             makeOne(file, "SELECT x FROM t EXCEPT SELECT i FROM n");
         }},
        {"JSON without end",
         {1},
         [](const std::string& file, int) {
             makeOne(file, "SELECT json_group_object(i, hex(zeroblob(1000))) FROM n");
         }},
        {"JSON of rows",
         {1},
         [](const std::string& file, int) {
             makeOne(file, "SELECT count(*) FROM n, json_each('[1,2,3' || hex(i) || ']')");
         }},
    };
}
