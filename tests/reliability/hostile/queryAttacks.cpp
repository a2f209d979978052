#include "Attack.h"
#include "support/DatabaseMaker.h"

namespace {

void makeOne(const std::string& file, const std::string& select)
{
    DatabaseMaker maker(file);
    maker.putTargets(select);
    maker.finish();
}

/// Common table expressions each of which names the one below, in order or the other way round.
std::string ctes(int count, const std::string& select, bool isReversed = false)
{
    std::string result;
    for (int i = 1; i <= count; ++i) {
        const std::string one = numbered("c# AS (" + select + ")", i);
        result = isReversed ? one + "," + result : result + "," + one;
    }
    return isReversed ? "WITH " + result + "c0 AS (SELECT x FROM t) "
                      : "WITH c0 AS (SELECT x FROM t)" + result + " ";
}

void makeCtes(const std::string& file, int count, const std::string& select,
              bool isReversed = false)
{
    makeOne(file, ctes(count, select, isReversed) + "SELECT * FROM c" + std::to_string(count));
}

/// A table whose first columns' names are taken up by the queries as conditions.
void makeColumnNames(const std::string& file, const std::string& condition)
{
    DatabaseMaker maker(file);
    std::string name = "\"";
    for (const char letter : condition) {
        name += letter == '"' ? "\"\"" : std::string(1, letter);
    }
    name += "\"";
    maker.putTable("fault_type_definition", name + ", alias");
    maker.putTable("descriptions", "id, " + name);
    maker.run("INSERT INTO t SELECT a.x FROM t a, t b, t c, t d, t e, t f, t g, t h");
    maker.finish();
    runSql(file,
           "INSERT INTO fault_type_definition VALUES (1, 2); "
           "INSERT INTO descriptions VALUES (1, 2)");
}

}  // namespace

Attacks queryAttacks()
{
    return {
        {"CTEs over each other",
         {4, 14, 100, 3000},
         [](const std::string& file, int n) { makeCtes(file, n, "SELECT x FROM c@"); }},
        {"CTEs over each other, the highest first",
         {4, 14, 100, 3000},
         [](const std::string& file, int n) { makeCtes(file, n, "SELECT x FROM c@", true); }},
        {"CTEs that double",
         {4, 10, 25},
         [](const std::string& file, int n) { makeCtes(file, n, "SELECT a.x FROM c@ a, c@ b"); }},
        {"CTEs that double, the highest first",
         {4, 10, 25},
         [](const std::string& file, int n) {
             makeCtes(file, n, "SELECT a.x FROM c@ a, c@ b", true);
         }},
        {"materialized CTEs that double",
         {4, 10, 25},
         [](const std::string& file, int n) {
             std::string query = "WITH c0 AS (SELECT x FROM t)";
             for (int i = 1; i <= n; ++i) {
                 query += numbered(", c# AS NOT MATERIALIZED (SELECT a.x FROM c@ a, c@ b)", i);
             }
             makeOne(file, query + " SELECT * FROM c" + std::to_string(n));
         }},
        {"CTEs whose column doubles",
         {4, 14, 25},
         [](const std::string& file, int n) { makeCtes(file, n, "SELECT x||x AS x FROM c@"); }},
        {"CTEs with columns and quotes that double",
         {4, 14, 25},
         [](const std::string& file, int n) {
             std::string query = "WITH c0(x) AS (SELECT x FROM t)";
             for (int i = 1; i <= n; ++i) {
                 query += numbered(R"(, "c""#"(x) AS (SELECT a.x FROM )", i) +
                          (i > 1 ? numbered("[c\"@] a, [c\"@] b)", i) : "c0 a, c0 b)");
             }
             makeOne(file, query + " SELECT * FROM [c\"" + std::to_string(n) + "]");
         }},
        {"CTEs in CTEs",
         {4, 10, 20},
         [](const std::string& file, int n) {
             makeOne(file, repeated("WITH a AS (", n) + "SELECT x FROM t" +
                               repeated(") SELECT p.x FROM a p, a q", n));
         }},
        {"CTEs in front of each other",
         {4, 10, 20},
         [](const std::string& file, int n) {
             std::string query = "SELECT x FROM t";
             for (int i = 0; i < n; ++i) {
                 query = numbered("WITH a# AS (SELECT x FROM t) SELECT x||x AS x FROM (", i) +
                         query + ")";
             }
             makeOne(file, query);
         }},
        {"CTEs called like the view",
         {4, 14},
         [](const std::string& file, int n) {
             makeOne(file,
                     "WITH descriptions AS (SELECT x FROM t), a AS (SELECT p.x FROM "
                     "descriptions p, descriptions q) SELECT * FROM " +
                         repeated("a", n, ","));
         }},
        {"CTEs that shadow views",
         {14, 200},
         [](const std::string& file, int n) {
             DatabaseMaker maker(file);
             maker.putView("v0", "SELECT x FROM t");
             for (int i = 1; i <= n; ++i) {
                 maker.putView(numbered("v#", i),
                               numbered("WITH c AS (SELECT x FROM v@) SELECT x FROM c", i));
             }
             maker.putTargets("SELECT * FROM v" + std::to_string(n));
             maker.finish();
         }},
        {"recursive CTEs over each other",
         {4, 14},
         [](const std::string& file, int n) {
             makeCtes(file, n, "SELECT x FROM c@ UNION SELECT c#.x + 1 FROM c#, c@ WHERE c#.x < 4");
         }},
        {"recursive CTE of many terms",
         {10, 100},
         [](const std::string& file, int n) {
             makeOne(file, "WITH RECURSIVE c(x) AS (SELECT 1" +
                               repeated(" UNION SELECT x + 1 FROM c WHERE x < 9", n) +
                               ") SELECT * FROM c");
         }},
        {"windows named after each other",
         {4, 60},
         [](const std::string& file, int n) {
             std::string windows = "w0 AS (PARTITION BY x)";
             for (int i = 1; i <= n; ++i) {
                 windows += numbered(", w# AS (w@)", i);
             }
             makeOne(file,
                     "SELECT count(*) OVER w" + std::to_string(n) + " FROM t WINDOW " + windows);
         }},
        {"columns called like a condition without end",
         {1},
         [](const std::string& file, int) {
             makeColumnNames(file,
                             "(WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n) "
                             "SELECT max(i) FROM n) + 1");
         }},
        {"columns called like CTEs that double",
         {10, 20, 25},
         [](const std::string& file, int n) {
             makeColumnNames(
                 file, "(" + ctes(n, "SELECT a.x || b.x AS x FROM c@ a JOIN c@ b ON a.x = b.x") +
                           "SELECT x FROM c" + std::to_string(n) + ")");
         }},
        {"columns called like CTEs over each other",
         {100, 2000},
         [](const std::string& file, int n) {
             makeColumnNames(file, "(" + ctes(n, "SELECT x FROM c@") + "SELECT x FROM c" +
                                       std::to_string(n) + ")");
         }},
        {"columns called like deep expressions",
         {50, 190, 900},
         [](const std::string& file, int n) {
             makeColumnNames(file, repeated("alias + ", n) + "1 OR 1");
         }},
        {"columns called like deep subqueries",
         {10, 20, 45},
         [](const std::string& file, int n) {
             makeColumnNames(file, repeated("(SELECT ", n) + "1" + repeated(")", n));
         }},
        {"columns called like the longest texts",
         {1},
         [](const std::string& file, int) {
             makeColumnNames(file, "instr(hex(zeroblob(8000000)), hex(zeroblob(4000000)) || '1')");
         }},
        {"columns called like trims",
         {1},
         [](const std::string& file, int) {
             makeColumnNames(file,
                             "trim(hex(zeroblob(200000)), replace(hex(zeroblob(90000)), '0', "
                             "'abc') || '0')");
         }},
        {"columns called like texts that take memory",
         {1, 20},
         [](const std::string& file, int n) {
             makeColumnNames(
                 file, "(SELECT max(" + repeated("randomblob(15000000)", n + 1, ",") + ") FROM t)");
         }},
        {"columns called like JSON that takes memory",
         {1, 100},
         [](const std::string& file, int n) {
             makeColumnNames(
                 file, "json_array(" +
                           repeated("replace(hex(zeroblob(7000000)), '0', char(1))", n, ",") + ")");
         }},
        {"columns called like questions on pragmas",
         {20, 2000},
         [](const std::string& file, int n) {
             DatabaseMaker maker(file);
             maker.putView("v0", "SELECT x FROM t");
             for (int i = 1; i <= n; ++i) {
                 maker.putView(numbered("v#", i), numbered("SELECT x FROM v@", i));
             }
             const std::string name =
                 "\"(SELECT count(*) FROM pragma_table_info('v' || " + std::to_string(n) + "))\"";
             maker.putTable("fault_type_definition", name + ", alias");
             maker.putTable("descriptions", "id, " + name);
             maker.finish();
         }},
        {"columns called like compounds",
         {100, 190, 400},
         [](const std::string& file, int n) {
             makeColumnNames(file, "(SELECT count(*) FROM (" +
                                       repeated("SELECT x FROM t", n, " UNION ALL ") + ") a, (" +
                                       repeated("SELECT x FROM t", n, " UNION ALL ") + ") b)");
         }},
        {"columns called like patterns",
         {100, 900},
         [](const std::string& file, int n) {
             makeColumnNames(file,
                             "hex(zeroblob(100000)) LIKE '" + repeated("%0", n) + "1' OR alias");
         }},
        {"columns with names of megabytes",
         {1000000, 8000000},
         [](const std::string& file, int n) {
             makeColumnNames(file, std::string(static_cast<std::size_t>(n), 'x'));
         }},
    };
}
