#include "Attack.h"
#include "support/DatabaseMaker.h"

namespace {

/// Views v1 to v`count`, one over the other: v0 is the table's, `#` in the text the view's own
/// number and `@` that of the view below. Both tables are views on the highest.
void makeTower(const std::string& file, int count, const std::string& select,
               const std::string& lowest = "SELECT x, x AS y FROM t")
{
    DatabaseMaker maker(file);
    maker.putView("v0", lowest);
    for (int i = 1; i <= count; ++i) {
        maker.putView("v" + std::to_string(i), numbered(select, i));
    }
    maker.putTargets("SELECT * FROM v" + std::to_string(count));
    maker.finish();
}

/// One view in the place of both tables.
void makeOne(const std::string& file, const std::string& select)
{
    DatabaseMaker maker(file);
    maker.putTargets(select);
    maker.finish();
}

void makeFamilies(const std::string& file, int families)
{
    DatabaseMaker maker(file);
    std::string all;
    for (int family = 0; family < families; ++family) {
        const std::string name = "f" + std::to_string(family) + "_";
        maker.putView(name + "0", "SELECT x FROM t");
        for (int i = 1; i <= 12; ++i) {
            const std::string below = name + std::to_string(i - 1);
            maker.putView(name + std::to_string(i),
                          "SELECT a.x FROM " + below + " a, " + below + " b");
        }
        all += (family > 0 ? " UNION ALL SELECT x FROM " : "SELECT x FROM ") + name + "12";
    }
    maker.putTargets(all);
    maker.finish();
}

}  // namespace

Attacks viewAttacks()
{
    return {
        {"views over views",
         {4, 15, 17, 200, 20000},
         [](const std::string& file, int n) { makeTower(file, n, "SELECT * FROM v@"); }},
        {"views that sort, over each other",
         {4, 14, 200},
         [](const std::string& file, int n) {
             makeTower(file, n, "SELECT * FROM v@ ORDER BY y LIMIT 100");
         }},
        {"views that aggregate, over each other",
         {4, 14, 200},
         [](const std::string& file, int n) {
             makeTower(file, n, "SELECT max(x) AS x, y FROM v@ GROUP BY y HAVING count(*) > 0");
         }},
        {"views with windows, over each other",
         {4, 14, 200},
         [](const std::string& file, int n) {
             makeTower(file, n, "SELECT x, sum(y) OVER (PARTITION BY x ORDER BY y) AS y FROM v@");
         }},
        {"views that double",
         {4, 10, 20, 40},
         [](const std::string& file, int n) {
             makeTower(file, n, "SELECT a.x, b.y FROM v@ a, v@ b");
         }},
        {"views that double by EXISTS",
         {4, 10, 40},
         [](const std::string& file, int n) {
             makeTower(file, n, "SELECT x, y FROM v@ WHERE EXISTS (SELECT 1 FROM v@) AND x IN v@");
         }},
        {"views that double by scalar subqueries",
         {4, 10, 40},
         [](const std::string& file, int n) {
             makeTower(file, n,
                       "SELECT (SELECT max(x) FROM v@) AS x, (SELECT y FROM v@ LIMIT 1) AS y");
         }},
        {"families of doubling views", {1, 10, 40, 200}, makeFamilies},
        {"columns that double",
         {4, 10, 15, 30},
         [](const std::string& file, int n) {
             makeTower(file, n, "SELECT x || x AS x, y FROM v@");
         }},
        {"columns of 64 mentions",
         {2, 3, 4, 10},
         [](const std::string& file, int n) {
             makeTower(file, n, "SELECT " + repeated("x", 64, "||") + " AS x, y FROM v@");
         }},
        {"columns that double under two names",
         {4, 10, 15},
         [](const std::string& file, int n) {
             makeTower(file, n,
                       "SELECT p + q AS x, p - q AS y FROM (SELECT x AS p, x + y AS q FROM v@)");
         }},
        {"columns that cross",
         {10, 15, 40},
         [](const std::string& file, int n) {
             makeTower(file, n, "SELECT x + y AS x, x - y AS y FROM v@");
         }},
        {"columns that double in CASE",
         {10, 15},
         [](const std::string& file, int n) {
             makeTower(file, n,
                       "SELECT CASE x WHEN y THEN x WHEN x THEN y ELSE x END AS x, y FROM v@");
         }},
        {"columns that double by *",
         {4, 6, 10, 15},
         [](const std::string& file, int n) { makeTower(file, n, "SELECT *, * FROM v@"); }},
        {"columns that double by * of a join",
         {3, 4, 6},
         [](const std::string& file, int n) {
             makeTower(file, n, "SELECT a.*, b.*, a.* FROM v@ a, v@ b");
         }},
        {"conditions that double",
         {10, 15},
         [](const std::string& file, int n) {
             makeTower(file, n, "SELECT x + x AS x, y FROM v@ WHERE x AND x > y OR x < y");
         }},
        {"conditions by 190 on each of the views",
         {1, 4, 14},
         [](const std::string& file, int n) {
             makeTower(file, n, "SELECT * FROM v@ WHERE " + repeated("x <> y", 190, " AND "));
         }},
        {"equalities by 190",
         {1, 4, 14},
         [](const std::string& file, int n) {
             makeTower(file, n, "SELECT * FROM v@ WHERE " + repeated("x = y", 190, " AND "));
         }},
        {"constants by 190",
         {1, 4, 14},
         [](const std::string& file, int n) {
             makeTower(file, n,
                       "SELECT * FROM v@ WHERE " + repeated("x = 1 AND y = x", 95, " AND "));
         }},
        {"OR terms by 190",
         {1, 4, 14},
         [](const std::string& file, int n) {
             makeTower(file, n, "SELECT * FROM v@ WHERE " + repeated("x = 1", 190, " OR "),
                       "SELECT rowid AS x, x AS y FROM t");
         }},
        {"ORs in ANDs",
         {1, 4, 14},
         [](const std::string& file, int n) {
             makeTower(file, n,
                       "SELECT * FROM v@ WHERE " +
                           repeated("(x = 1 AND y = 2 OR x = 3 AND y < 4 OR y = 5)", 95, " AND "),
                       "SELECT rowid AS x, x AS y FROM t");
         }},
        {"BETWEEN in BETWEEN",
         {10, 90},
         [](const std::string& file, int n) {
             std::string condition = "x";
             for (int i = 0; i < n; ++i) {
                 condition += " BETWEEN 0 AND 1";
             }
             makeOne(file, "SELECT * FROM t WHERE " + condition);
         }},
        {"vectors",
         {10, 100},
         [](const std::string& file, int n) {
             const std::string list = repeated("x", n, ",");
             makeOne(file, "SELECT * FROM t WHERE (" + list + ") IN (SELECT " + list +
                               " FROM t) AND (" + list + ") = (" + list + ")");
         }},
        {"vectors in views",
         {4, 14},
         [](const std::string& file, int n) {
             makeTower(
                 file, n,
                 "SELECT * FROM v@ WHERE (x, y) IN (SELECT y, x FROM v@) AND (x, y) > (y, x)");
         }},
        {"USING over views",
         {4, 10, 15},
         [](const std::string& file, int n) {
             makeTower(file, n, "SELECT x, y FROM v@ JOIN (SELECT 1 AS x) USING (x)");
         }},
        {"NATURAL joins",
         {2, 6, 15},
         [](const std::string& file, int n) {
             makeTower(file, n,
                       "SELECT x, x AS y FROM (SELECT x FROM v@)" + repeated(" NATURAL JOIN t", 4));
         }},
        {"FULL joins",
         {2, 6, 10, 15},
         [](const std::string& file, int n) {
             makeTower(file, n, "SELECT x, y FROM v@" + repeated(" NATURAL FULL JOIN t", 4));
         }},
        {"FULL joins by USING",
         {6, 15},
         [](const std::string& file, int n) {
             makeTower(file, n,
                       "SELECT x, y FROM v@ FULL JOIN t USING (x) FULL JOIN (SELECT 1 AS x, 2 AS "
                       "y) USING (x, y)");
         }},
        {"joins of many tables",
         {10, 60, 64, 1000},
         [](const std::string& file, int n) {
             makeOne(file, "SELECT 1 FROM " + repeated("t", n, ","));
         }},
        {"NATURAL joins of many tables",
         {10, 60, 64, 1000},
         [](const std::string& file, int n) {
             makeOne(file, "SELECT x FROM " + repeated("t", n, " NATURAL JOIN "));
         }},
        {"joins of joins",
         {2, 4, 8},
         [](const std::string& file, int n) {
             makeTower(file, n,
                       "SELECT a.x, a.y FROM v@ a JOIN v@ b ON a.x = b.x LEFT JOIN v@ c "
                       "ON c.y = b.y");
         }},
        {"UNION ALL over views",
         {4, 8, 15, 40},
         [](const std::string& file, int n) {
             makeTower(file, n, "SELECT * FROM v@ UNION ALL SELECT * FROM v@");
         }},
        {"UNION over views",
         {4, 8, 15},
         [](const std::string& file, int n) {
             makeTower(file, n, "SELECT * FROM v@ UNION SELECT y, x FROM v@");
         }},
        {"sorted UNION over views",
         {4, 8, 15},
         [](const std::string& file, int n) {
             makeTower(file, n, "SELECT * FROM v@ UNION SELECT y, x FROM v@ ORDER BY 1, 2");
         }},
        {"compounds",
         {150, 200, 400, 500, 5000},
         [](const std::string& file, int n) {
             makeOne(file, repeated("SELECT x FROM t", n, " UNION ALL "));
         }},
        {"compounds without duplicates",
         {150, 200, 400},
         [](const std::string& file, int n) {
             makeOne(file, repeated("SELECT x FROM t", n, " UNION ") + " ORDER BY x");
         }},
        {"compounds of different kinds",
         {66, 130},
         [](const std::string& file, int n) {
             makeOne(file, repeated("SELECT x FROM t UNION SELECT 2 EXCEPT SELECT 3 FROM t", n,
                                    " INTERSECT "));
         }},
        {"compounds crossed twice",
         {20, 60, 190},
         [](const std::string& file, int n) {
             const std::string compound = "(" + repeated("SELECT x FROM t", n, " UNION ALL ") + ")";
             makeOne(file, "SELECT a.x FROM " + compound + " a, " + compound + " b");
         }},
        {"compounds crossed often",
         {10, 40, 190},
         [](const std::string& file, int n) {
             makeTower(file, 1, "SELECT a.x FROM " + repeated("v0 a, v0 b, v0 c, v0 d", 1),
                       repeated("SELECT x, x AS y FROM t", n, " UNION ALL "));
         }},
        {"compounds under 1000 mentions of a column",
         {10, 60, 190},
         [](const std::string& file, int n) {
             makeTower(file, 1, "SELECT " + repeated(repeated("x", 100, "+"), 10, ",") + " FROM v0",
                       repeated("SELECT x, x AS y FROM t", n, " UNION ALL "));
         }},
        {"conditions pushed down into compounds",
         {10, 60, 190},
         [](const std::string& file, int n) {
             makeTower(file, 4, "SELECT * FROM v@ WHERE " + repeated("x <> y", 100, " AND "),
                       repeated("SELECT x, x AS y FROM t", n, " UNION "));
         }},
        {"compounds over compounds",
         {2, 4, 8},
         [](const std::string& file, int n) {
             makeTower(file, n, repeated("SELECT * FROM v@", 20, " UNION ALL "));
         }},
        {"rows of VALUES",
         {100, 5000, 30000},
         [](const std::string& file, int n) {
             makeOne(file, "VALUES " + repeated("(1, 2)", n, ","));
         }},
        {"sorted rows of VALUES",
         {100, 5000},
         [](const std::string& file, int n) {
             makeOne(file, "VALUES " + repeated("(1)", n, ",") + " UNION SELECT 2 ORDER BY 1");
         }},
        {"rows of VALUES in views",
         {100, 5000},
         [](const std::string& file, int n) {
             makeTower(file, 8,
                       "SELECT a.x, b.y FROM v@ a JOIN v0 b WHERE a.x IN (SELECT x FROM v0)",
                       "SELECT column1 AS x, column2 AS y FROM (VALUES " +
                           repeated("(1, 2)", n, ",") + ")");
         }},
        {"elements of IN",
         {100, 5000, 100000},
         [](const std::string& file, int n) {
             makeOne(file, "SELECT x FROM t WHERE x IN (" + repeated("1", n, ",") + ")");
         }},
        {"views in a circle",
         {100, 490},
         [](const std::string& file, int n) {
             DatabaseMaker maker(file);
             maker.putTargets(repeated("SELECT 1, 2 FROM c1", n, " UNION ALL "));
             maker.putView("c1", "SELECT 1 FROM " + repeated("c2", 45, ","));
             maker.putView("c2",
                           "SELECT 1 IN (" + repeated("'a'", 2000, ",") + ") FROM descriptions");
             maker.finish();
         }},
        {"common table expressions called alike, by thousands",
         {1000, 4000},
         [](const std::string& file, int n) {
             DatabaseMaker maker(file);
             maker.putTargets("SELECT x, 1 FROM t WHERE x IN (" + repeated("'c'", 6 * n, ",") +
                              ")");
             std::string alike = R"("c""0" AS (SELECT 1))";
             for (int i = 1; i < n; ++i) {
                 alike += numbered(R"(, "c""#" AS (SELECT 1))", i);
             }
             for (int i = 1; i <= 8; ++i) {
                 maker.putView(numbered("w#", i), "WITH " + alike + " SELECT 1");
             }
             maker.finish();
         }},
        {"expressions deep in themselves",
         {90, 190, 210, 900},
         [](const std::string& file, int n) {
             makeOne(file, "SELECT " + repeated("x", n, "+") + " AS x FROM t");
         }},
        {"deep functions",
         {20, 90},
         [](const std::string& file, int n) {
             makeOne(file,
                     "SELECT " + repeated("abs(", n) + "x" + repeated(")", n) + " AS x FROM t");
         }},
        {"deep conditions",
         {90, 190, 900},
         [](const std::string& file, int n) {
             makeOne(file, "SELECT x FROM t WHERE " + repeated("x", n, " OR ") + " IN (1, 2)");
         }},
        {"deep NOT",
         {30, 90},
         [](const std::string& file, int n) {
             makeOne(file, "SELECT " + repeated("NOT ", n) + "x AS x FROM t WHERE " +
                               repeated("NOT ", n) + "x");
         }},
        {"deep CASE",
         {10, 30},
         [](const std::string& file, int n) {
             makeOne(file, "SELECT " + repeated("CASE x WHEN 1 THEN 2 ELSE ", n) + "x" +
                               repeated(" END", n) + " AS x FROM t");
         }},
        {"deep columns over each other",
         {2, 4, 14},
         [](const std::string& file, int n) {
             makeTower(file, n, "SELECT " + repeated("1+", 95) + "x AS x, y FROM v@");
         }},
        {"deep columns over each other in functions",
         {2, 4, 14},
         [](const std::string& file, int n) {
             makeTower(
                 file, n,
                 "SELECT " + repeated("max(1,", 40) + "x" + repeated(")", 40) + " AS x, y FROM v@");
         }},
        {"subqueries in subqueries",
         {4, 10, 20},
         [](const std::string& file, int n) {
             makeOne(file,
                     "SELECT * FROM " + repeated("(SELECT * FROM ", n) + "t" + repeated(")", n));
         }},
        {"subqueries in subqueries that double a column",
         {4, 10, 20},
         [](const std::string& file, int n) {
             makeOne(file, "SELECT x FROM " + repeated("(SELECT x || x AS x FROM ", n) + "t" +
                               repeated(")", n));
         }},
        {"scalar subqueries in each other",
         {4, 10, 20},
         [](const std::string& file, int n) {
             makeOne(file, "SELECT " + repeated("(SELECT ", n) + "x" + repeated(" FROM t)", n) +
                               " AS x FROM t");
         }},
        {"terms of ORDER BY",
         {10, 100, 1000},
         [](const std::string& file, int n) {
             makeTower(file, 4,
                       "SELECT x + 1 AS x, y FROM v@ ORDER BY " + repeated("x + y", n, ","));
         }},
        {"ORDER BY that means columns",
         {10, 100},
         [](const std::string& file, int n) {
             makeTower(
                 file, 8,
                 "SELECT x || 'a' AS x, y FROM v@ ORDER BY " + repeated("1", n, ",") + " LIMIT 5");
         }},
        {"GROUP BY that means columns",
         {10, 100},
         [](const std::string& file, int n) {
             makeTower(file, 8,
                       "SELECT x || 'a' AS x, y FROM v@ GROUP BY " + repeated("1", n, ","));
         }},
        {"aliases of expressions in conditions",
         {4, 90},
         [](const std::string& file, int n) {
             makeOne(file, "SELECT " + repeated("x", 90, "||") + " AS a FROM t WHERE " +
                               repeated("a", n, "||") + " ORDER BY " + repeated("a", n, "||"));
         }},
        {"names of windows",
         {10, 50},
         [](const std::string& file, int n) {
             makeOne(file, "SELECT " + repeated("count(*) OVER w", n, ",") +
                               " FROM t WINDOW w AS (ORDER BY " + repeated("x", 90, "||") + ")");
         }},
        {"different windows",
         {10, 50},
         [](const std::string& file, int n) {
             std::string columns = "x";
             for (int i = 0; i < n; ++i) {
                 columns += numbered(", sum(x) OVER (ORDER BY x + #)", i);
             }
             makeOne(file, "SELECT " + columns + " FROM t");
         }},
    };
}
