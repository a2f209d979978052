#include "Attack.h"
#include "support/DatabaseMaker.h"

namespace {

constexpr int HIGH = 1000;

/// How the views of a tower are called: `#` stands for a number.
struct Writing {
    const char* name;       ///< in the schema table
    const char* creating;   ///< in the view's own statement
    const char* selecting;  ///< in that of the view above
};

constexpr Writing WRITINGS[] = {
    {"v#", "\"v#\"", "\"v#\""},
    {"v#", "v#", "[v#]"},
    {"v#", "`v#`", "\"v#\""},
    {"v#", "'v#'", "v#"},
    {"v#", "v#", "'v#'"},
    {"v#", "v#", "V#"},
    {"v#", "v#", "\"main\".v#"},
    {"v#", "v#", "main . [v#]"},
    {"v#", "/* v */ v# -- v\n", "/* v */ v# -- v\n"},
    {"v#", "v#", "main/**/./**/v#"},
    {"v#", "v#", "(((v#)))"},
    {"v#", "v#", "t, v# AS v#"},
    {"v#", "v#", "v# v"},
    {"v#", "v#", "v# NOT INDEXED"},
    {"v#", "v#", "t WHERE x IN v#"},
    {"v#", "v#", "t WHERE x IN main.v#"},
    {"v#", "v#", "t WHERE EXISTS (SELECT 1 FROM v#)"},
    {"v#", "v#", "t ORDER BY (SELECT 1 FROM v#)"},
    {"v#", "v#", "t GROUP BY (SELECT 1 FROM v#)"},
    {"v#", "v#", "t LIMIT (SELECT 1 FROM v#)"},
    {"v#", "v#", "t JOIN t a ON a.x = (SELECT 1 FROM v#)"},
    {"v#", "v#", "(WITH x AS (SELECT * FROM v#) SELECT * FROM x)"},
    {"v#", "v#(x)", "v#"},
    {"v\"#", R"("v""#")", "[v\"#]"},
    {"v\"#", "[v\"#]", R"("v""#")"},
    {"v'#", "'v''#'", "[v'#]"},
    {"v`#", "`v``#`", "\"v`#\""},
    {"v]#", "\"v]#\"", "`v]#`"},
    {"\"#", R"("""#")", "[\"#]"},
    {"#\"", R"("#""")", "[#\"]"},
    {"v #", "[v #]", "\"v #\""},
    {"select#", "[select#]", "select#"},
    {"#", "[#]", "[#]"},
    {"", "\"\"", "\"\""},
    {"v#", "v#", "\xEF\xBB\xBFv#"},
    {"v#", "\xEF\xBB\xBFv#", "v#"},
    {"\xC3\xA4#", "\xC3\xA4#", "[\xC3\xA4#]"},
    {"v$#", "v$#", "[v$#]"},
    {"_#", "_#", "\"_#\""},
    {"like#", "like#", "like#"},
    {"v#", "v#", "t, t v INNER JOIN v# USING (x)"},
    {"v#", "v#", "t NATURAL LEFT OUTER JOIN v#"},
    {"v#", "v#", "v# UNION SELECT * FROM t"},
    {"v#", "v#", "(SELECT * FROM (SELECT * FROM (v#)))"},
};

/// Views over views that are called so that one has to read as SQLite does to see it.
template <std::size_t INDEX>
void makeTower(const std::string& file, int count)
{
    const Writing& writing = WRITINGS[INDEX];
    DatabaseMaker maker(file);
    const auto add = [&](int i, const std::string& from) {
        const std::string name = numbered(writing.name, i);
        maker.put(
            "view", name, name,
            "CREATE VIEW " + numbered(writing.creating, i) + " AS SELECT 1 AS x FROM " + from);
    };
    add(0, "t");
    for (int i = 1; i < count; ++i) {
        add(i, numbered(writing.selecting, i - 1));
    }
    maker.putTargets("SELECT * FROM " + numbered(writing.selecting, count - 1));
    maker.finish();
}

template <std::size_t... INDEXES>
Attacks towers(std::index_sequence<INDEXES...> /*unused*/)
{
    return {{WRITINGS[INDEXES].selecting, {4, HIGH}, makeTower<INDEXES>}...};
}

/// A view whose name is also a keyword, over a tower.
void makeUnder(const std::string& file, const std::string& name, const std::string& creating,
               const std::string& selecting, int count)
{
    DatabaseMaker maker(file);
    maker.putView("v0", "SELECT 1 AS x");
    for (int i = 1; i < count; ++i) {
        maker.putView("v" + std::to_string(i), "SELECT x FROM v" + std::to_string(i - 1));
    }
    maker.put("view", name, name, creating + " AS SELECT * FROM v" + std::to_string(count - 1));
    maker.putTargets("SELECT * FROM " + selecting);
    maker.finish();
}

}  // namespace

Attacks nameAttacks()
{
    Attacks attacks = towers(std::make_index_sequence<std::size(WRITINGS)>());
    const Attacks keywords = {
        {"view called view",
         {HIGH},
         [](const std::string& file, int n) {
             makeUnder(file, "view", "CREATE VIEW view", "view", n);
         }},
        {"view called [view]",
         {HIGH},
         [](const std::string& file, int n) {
             makeUnder(file, "view", "CREATE VIEW [view]", "view", n);
         }},
        {"view called if",
         {HIGH},
         [](const std::string& file, int n) {
             makeUnder(file, "if", "CREATE VIEW \"if\"", "if", n);
         }},
        {"view if not exists",
         {HIGH},
         [](const std::string& file, int n) {
             makeUnder(file, "w", "CREATE VIEW IF NOT EXISTS w", "w", n);
         }},
        {"view if not exists if",
         {HIGH},
         [](const std::string& file, int n) {
             makeUnder(file, "if", "CREATE VIEW IF NOT EXISTS [if]", "if", n);
         }},
        {"temporary view",
         {HIGH},
         [](const std::string& file, int n) {
             makeUnder(file, "w", "CREATE TEMP VIEW w", "temp.w", n);
         }},
        {"temporary view called view",
         {HIGH},
         [](const std::string& file, int n) {
             makeUnder(file, "view", "CREATE TEMPORARY VIEW view", "view", n);
         }},
        {"view called with",
         {HIGH},
         [](const std::string& file, int n) {
             makeUnder(file, "with", "CREATE VIEW with", "with", n);
         }},
        {"view called recursive",
         {HIGH},
         [](const std::string& file, int n) {
             makeUnder(file, "recursive", "CREATE VIEW recursive", "recursive", n);
         }},
        {"view called materialized",
         {HIGH},
         [](const std::string& file, int n) {
             makeUnder(file, "materialized", "CREATE VIEW materialized", "materialized", n);
         }},
        {"view called key",
         {HIGH},
         [](const std::string& file, int n) {
             makeUnder(file, "key", "CREATE VIEW key", "key", n);
         }},
        {"view called like",
         {HIGH},
         [](const std::string& file, int n) {
             makeUnder(file, "like", "CREATE VIEW like", "like", n);
         }},
        {"view called \"as\"",
         {HIGH},
         [](const std::string& file, int n) {
             makeUnder(file, "as", "CREATE VIEW [as]", "\"as\"", n);
         }},
        {"view called end",
         {HIGH},
         [](const std::string& file, int n) {
             makeUnder(file, "end", "CREATE VIEW end", "end", n);
         }},
        {"view with columns called as",
         {HIGH},
         [](const std::string& file, int n) {
             makeUnder(file, "w", "CREATE VIEW w([as])", "(SELECT \"as\" v FROM w)", n);
         }},
    };
    attacks.insert(attacks.end(), keywords.begin(), keywords.end());
    return attacks;
}
