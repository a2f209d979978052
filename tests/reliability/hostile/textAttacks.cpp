#include "Attack.h"
#include "support/DatabaseMaker.h"

namespace {

constexpr int KIB = 1024;

/// Views on a table with two texts of a length: `x`, of one letter, and `y`, of two in turn.
void makeTexts(const std::string& file, int length, const std::string& select,
               const std::string& encoding = "UTF-8")
{
    DatabaseMaker maker(file, encoding);
    const std::string half = std::to_string(length / 2);
    maker.run("CREATE TABLE b(x, y); INSERT INTO b VALUES (replace(hex(zeroblob(" + half +
              ")), '0', 'a'), replace(hex(zeroblob(" + half + ")), '00', 'ab'))");
    maker.putTargets(select);
    maker.finish();
}

constexpr const char* MANY = "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n) ";

/// As many columns, each of which takes an expression.
std::string columns(const std::string& expression, int count)
{
    std::string result;
    for (int i = 0; i < count; ++i) {
        result += (i > 0 ? ", " : "") + expression + " AS c" + std::to_string(i);
    }
    return result;
}

/// A function call as often as SQLite allows in a row of one column.
std::string sum(const std::string& expression, int count)
{
    return repeated(expression, count, " + ");
}

}  // namespace

Attacks textAttacks()
{
    return {
        {"text repeated by a view",
         {16 * KIB, 256 * KIB, 4096 * KIB},
         [](const std::string& file, int n) {
             makeTexts(file, n, MANY + std::string("SELECT x FROM n, b"));
         }},
        {"text repeated in each column",
         {16 * KIB, 256 * KIB, 1024 * KIB, 4096 * KIB, 16000 * KIB},
         [](const std::string& file, int n) {
             makeTexts(file, n, MANY + ("SELECT " + columns("x", 99) + " FROM n, b"));
         }},
        {"text in UTF-16 repeated in each column",
         {16 * KIB, 256 * KIB, 1024 * KIB},
         [](const std::string& file, int n) {
             makeTexts(file, n, MANY + ("SELECT " + columns("x", 99) + " FROM n, b"), "UTF-16le");
         }},
        {"letters of three bytes in UTF-16",
         {16 * KIB, 1024 * KIB},
         [](const std::string& file, int n) {
             makeTexts(
                 file, n,
                 MANY + ("SELECT " + columns("replace(x, 'a', char(8364))", 90) + " FROM n, b"),
                 "UTF-16be");
         }},
        {"text made anew in each column",
         {16 * KIB, 256 * KIB, 1024 * KIB, 4096 * KIB},
         [](const std::string& file, int n) {
             makeTexts(file, n, MANY + ("SELECT " + columns("upper(x || i)", 99) + " FROM n, b"));
         }},
        {"zeroblobs",
         {16 * KIB, 1024 * KIB},
         [](const std::string& file, int n) {
             makeTexts(file, n,
                       MANY + ("SELECT " + columns("zeroblob(" + std::to_string(n) + ")", 99) +
                               " FROM n, b"));
         }},
        {"texts by printf",
         {16 * KIB, 1024 * KIB, 16000 * KIB},
         [](const std::string& file, int n) {
             makeTexts(file, 100,
                       MANY + ("SELECT " + columns("printf('%" + std::to_string(n) + "d', i)", 99) +
                               " FROM n, b"));
         }},
        {"digits by printf",
         {16 * KIB, 1024 * KIB},
         [](const std::string& file, int n) {
             makeTexts(file, 100,
                       MANY + ("SELECT " +
                               columns("printf('%." + std::to_string(n) + "f', i / 3.0)", 99) +
                               " FROM n, b"));
         }},
        {"texts by hex",
         {16 * KIB, 1024 * KIB},
         [](const std::string& file, int n) {
             makeTexts(file, n,
                       MANY + ("SELECT " + columns("hex(hex(hex(substr(x, 1, 20000))))", 50) +
                               " FROM n, b"));
         }},
        {"texts by quote",
         {16 * KIB, 1024 * KIB},
         [](const std::string& file, int n) {
             makeTexts(
                 file, n,
                 MANY + ("SELECT " + columns("quote(replace(x, 'a', ''''))", 50) + " FROM n, b"));
         }},
        {"texts by replace",
         {16 * KIB, 256 * KIB, 1024 * KIB},
         [](const std::string& file, int n) {
             makeTexts(file, n,
                       MANY + ("SELECT " + columns("replace(x, 'a', y)", 50) + " FROM n, b"));
         }},
        {"texts by group_concat",
         {16 * KIB, 256 * KIB, 1024 * KIB},
         [](const std::string& file, int n) {
             makeTexts(file, n,
                       MANY + ("SELECT " + columns("group_concat(x, y)", 50) + " FROM n, b"));
         }},
        {"texts by JSON arrays",
         {16 * KIB, 256 * KIB, 1024 * KIB},
         [](const std::string& file, int n) {
             makeTexts(file, n,
                       MANY + ("SELECT json_array(" +
                               repeated("replace(x, 'a', char(1))", 100, ",") + ") FROM n, b"));
         }},
        {"texts by JSON groups",
         {16 * KIB, 256 * KIB},
         [](const std::string& file, int n) {
             makeTexts(
                 file, n,
                 MANY + ("SELECT " + columns("json_group_array(replace(x, 'a', char(1)))", 20) +
                         " FROM n, b"));
         }},
        {"JSON objects, parsed",
         {16 * KIB, 256 * KIB, 1024 * KIB},
         [](const std::string& file, int n) {
             makeTexts(file, n,
                       MANY + ("SELECT json_set('[' || replace(x, 'a', '0,') || '0]', " +
                               repeated("'$[#]', 1", 50, ",") + ") FROM n, b"));
         }},
        {"JSON in JSON, by function",
         {100, 1000, 1900, 2100},
         [](const std::string& file, int n) {
             makeTexts(file, n, "SELECT json_extract(replace(x, 'a', '['), '$') FROM b");
         }},
        {"JSON in JSON, by operator",
         {100, 1000, 1900, 2100},
         [](const std::string& file, int n) {
             makeTexts(file, n,
                       "SELECT (replace(x, 'a', '[') || replace(x, 'a', ']')) -> '$' FROM b");
         }},
        {"JSON in JSON, by another operator",
         {1000, 1900},
         [](const std::string& file, int n) {
             makeTexts(file, n,
                       "SELECT (replace(x, 'a', '[') || replace(x, 'a', ']')) ->> '$[0]' FROM b");
         }},
        {"JSON in JSON, by table",
         {100, 1000, 1900},
         [](const std::string& file, int n) {
             makeTexts(file, n,
                       "SELECT value, key, type FROM json_each WHERE json = (SELECT replace(x, "
                       "'a', '[') || replace(x, 'a', ']') FROM b)");
         }},
        {"JSON in JSON, by tree",
         {100, 1000, 1900},
         [](const std::string& file, int n) {
             makeTexts(file, n,
                       "SELECT fullkey, path, value, json FROM b, json_tree(replace(x, 'a', '[') "
                       "|| replace(x, 'a', ']'))");
         }},
        {"JSON patched with JSON",
         {1000, 12000},
         [](const std::string& file, int n) {
             makeTexts(file, n,
                       "SELECT json_patch(replace(x, 'a', '{\"a\":') || '1' || replace(x, 'a', "
                       "'}'), replace(x, 'a', '{\"a\":') || '2' || replace(x, 'a', '}')) FROM b");
         }},
        {"instr",
         {16 * KIB, 64 * KIB, 256 * KIB},
         [](const std::string& file, int n) {
             makeTexts(file, n, "SELECT instr(x, substr(x, 1, length(x) / 2) || 'b') FROM b");
         }},
        {"instr of two letters",
         {16 * KIB, 64 * KIB, 256 * KIB},
         [](const std::string& file, int n) {
             makeTexts(file, n, "SELECT instr(y, substr(y, 1, length(y) / 2) || 'b') FROM b");
         }},
        {"instr, many in a row",
         {16 * KIB, 64 * KIB},
         [](const std::string& file, int n) {
             makeTexts(file, n,
                       "SELECT " +
                           columns(sum("instr(y, substr(y, 1, length(y) / 2) || 'b')", 40), 60) +
                           " FROM b");
         }},
        {"instr of letters above ASCII",
         {16 * KIB, 64 * KIB},
         [](const std::string& file, int n) {
             makeTexts(file, n,
                       "SELECT instr(z, substr(z, 1, length(z) / 2) || 'b') FROM (SELECT "
                       "replace(substr(x, 1, length(x) / 2), 'a', char(228)) AS z FROM b)");
         }},
        {"replace of long texts",
         {16 * KIB, 64 * KIB, 256 * KIB},
         [](const std::string& file, int n) {
             makeTexts(file, n, "SELECT replace(x, substr(x, 1, length(x) / 2) || 'b', '') FROM b");
         }},
        {"replace, many in a row",
         {16 * KIB, 64 * KIB},
         [](const std::string& file, int n) {
             makeTexts(file, n,
                       "SELECT " +
                           columns(repeated("replace(y, substr(y, 1, length(y) / 2) || 'b', '')",
                                            40, " > "),
                                   60) +
                           " FROM b");
         }},
        {"trim",
         {4 * KIB, 16 * KIB, 64 * KIB, 256 * KIB},
         [](const std::string& file, int n) {
             makeTexts(file, n,
                       "SELECT trim(x, replace(substr(y, 1, length(y) / 2), 'a', 'c') || 'a') "
                       "FROM b");
         }},
        {"trim, many in a row",
         {16 * KIB, 64 * KIB},
         [](const std::string& file, int n) {
             makeTexts(file, n,
                       "SELECT " +
                           columns(repeated("trim(x, replace(substr(y, 1, length(y) / 2), 'a', "
                                            "'c') || 'a')",
                                            20, " > "),
                                   60) +
                           " FROM b");
         }},
        {"trim, once for all and many in a row",
         {16 * KIB},
         [](const std::string& file, int n) {
             makeTexts(file, n,
                       "SELECT " + columns(repeated("trim(x, z)", 60, " > "), 60) +
                           " FROM (SELECT x, replace(substr(y, 1, length(y) / 2), 'a', 'c') || "
                           "'a' AS z FROM b LIMIT 1)");
         }},
        {"LIKE",
         {20, 200, 999},
         [](const std::string& file, int n) {
             makeTexts(file, 16 * KIB, "SELECT x LIKE '" + repeated("%a", n) + "b' FROM b");
         }},
        {"LIKE with gaps",
         {20, 200, 600},
         [](const std::string& file, int n) {
             makeTexts(file, 64 * KIB, "SELECT x LIKE '" + repeated("%_a", n) + "%b' FROM b");
         }},
        {"LIKE from a table",
         {20, 200, 999},
         [](const std::string& file, int n) {
             makeTexts(file, 2 * n,
                       "SELECT replace(hex(zeroblob(8000)), '0', 'a') LIKE replace(y, 'b', '%') "
                       "|| 'c' FROM b");
         }},
        {"like by its function",
         {20, 200, 999},
         [](const std::string& file, int n) {
             makeTexts(file, 16 * KIB, "SELECT \"like\"('" + repeated("%a", n) + "b', x) FROM b");
         }},
        {"LIKE in each column",
         {999},
         [](const std::string& file, int n) {
             makeTexts(file, 64 * KIB,
                       "SELECT " + columns(sum("(x LIKE '" + repeated("%a", n) + "b')", 20), 60) +
                           " FROM b");
         }},
        {"GLOB",
         {20, 200, 999},
         [](const std::string& file, int n) {
             makeTexts(file, 16 * KIB, "SELECT x GLOB '" + repeated("*a", n) + "b' FROM b");
         }},
        {"GLOB with sets",
         {20, 100, 400},
         [](const std::string& file, int n) {
             makeTexts(file, 16 * KIB, "SELECT x GLOB '" + repeated("*[a]", n) + "b' FROM b");
         }},
        {"GLOB with a long set",
         {100, 1900},
         [](const std::string& file, int n) {
             makeTexts(file, 64 * KIB, "SELECT x GLOB '*[" + repeated("b", n) + "]' FROM b");
         }},
        {"dates with modifiers",
         {10, 120},
         [](const std::string& file, int n) {
             makeTexts(file, 16 * KIB,
                       "SELECT strftime('%J', 'now'" +
                           repeated(", 'weekday 0', '+9999 months'", n / 2) + ") FROM b");
         }},
        {"long numbers",
         {16 * KIB, 1024 * KIB},
         [](const std::string& file, int n) {
             makeTexts(file, n,
                       "SELECT " + columns(sum("replace(x, 'a', '9')", 40), 40) + " FROM b");
         }},
        {"long columns, sorted",
         {16 * KIB, 256 * KIB},
         [](const std::string& file, int n) {
             makeTexts(file, n,
                       MANY + std::string("SELECT x || i AS x, i FROM n, b ORDER BY x COLLATE "
                                          "nocase DESC"));
         }},
        {"long columns in UTF-16, sorted",
         {16 * KIB},
         [](const std::string& file, int n) {
             makeTexts(file, n, MANY + std::string("SELECT x || i AS x, i FROM n, b LIMIT -1"),
                       "UTF-16le");
         }},
        {"DEFAULT texts of all rows",
         {1000, 10000, 65535},
         [](const std::string& file, int n) {
             DatabaseMaker maker(file);
             maker.run(
                 "CREATE TABLE descriptions(id); CREATE TABLE fault_type_definition(code);"
                 "INSERT INTO descriptions WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT "
                 "i + 1 FROM n) SELECT i FROM n LIMIT " +
                 std::to_string(n) +
                 "; INSERT INTO fault_type_definition SELECT id FROM descriptions;");
             const std::string text = std::string(10000, 'x');
             for (const char* table : {"descriptions(id", "fault_type_definition(code"}) {
                 const std::string name(table, std::string(table).find('('));
                 maker.run("UPDATE sqlite_master SET sql = " +
                           quoted("CREATE TABLE " + std::string(table) + ", name DEFAULT '" + text +
                                  "', remedy DEFAULT '" + text + "')") +
                           " WHERE name = " + quoted(name));
             }
             maker.finish();
         }},
    };
}
