#include "Attack.h"
#include "support/DatabaseMaker.h"

namespace {

/// Views over views, in the end called as SQLite's own modules call the tables behind them.
void putTower(DatabaseMaker& maker, const std::string& name, int count, const std::string& select)
{
    maker.putView("v0", select);
    for (int i = 1; i <= count; ++i) {
        maker.putView(numbered("v#", i), numbered("SELECT * FROM v@", i));
    }
    maker.putView(name, "SELECT * FROM v" + std::to_string(count));
}

/// Lets SQLite make a virtual table in the place of each table, with rows.
void addModules(DatabaseMaker& maker, const std::string& module)
{
    maker.run("COMMIT; PRAGMA writable_schema=OFF");
    for (const char* table : {"descriptions", "fault_type_definition"}) {
        maker.run("CREATE VIRTUAL TABLE " + std::string(table) + " USING " + module);
    }
    maker.run("PRAGMA writable_schema=ON; BEGIN");
}

/// Puts a virtual table in, in the place of one of the two, that SQLite does not look at.
void putModule(DatabaseMaker& maker, const std::string& table, const std::string& module)
{
    maker.put("table", table, table, "CREATE VIRTUAL TABLE " + table + " USING " + module);
}

void makeContent(const std::string& file, const std::string& module, int count)
{
    DatabaseMaker maker(file);
    putTower(maker, "w", count, "SELECT 1 AS id, 2 AS name");
    putModule(maker, "descriptions", module);
    putModule(maker, "fault_type_definition", module);
    maker.finish();
}

/// A virtual table whose own table is a tower of views.
void makeShadow(const std::string& file, const std::string& module, const std::string& suffix,
                const std::string& select, int count)
{
    DatabaseMaker maker(file);
    addModules(maker, module);
    maker.run("DELETE FROM sqlite_master WHERE name = 'descriptions" + suffix + "'");
    maker.run("DELETE FROM sqlite_master WHERE tbl_name = 'descriptions" + suffix + "'");
    putTower(maker, "descriptions" + suffix, count, select);
    maker.finish();
}

/// Virtual tables each of which has the next one as its content.
void makeChain(const std::string& file, const std::string& module, int count)
{
    DatabaseMaker maker(file);
    maker.run("CREATE TABLE f0(name); INSERT INTO f0 VALUES ('a')");
    for (int i = 1; i <= count; ++i) {
        putModule(maker, numbered("f#", i), numbered(module + "(content=\"f@\", name)", i));
    }
    putModule(maker, "descriptions", module + "(content=\"f" + std::to_string(count) + "\", name)");
    maker.finish();
}

}  // namespace

Attacks virtualTableAttacks()
{
    return {
        {"fts3 on a tower of views",
         {4, 2000},
         [](const std::string& file, int n) {
             makeContent(file, "fts3(content='w', id, name)", n);
         }},
        {"fts4 on a tower of views",
         {4, 2000},
         [](const std::string& file, int n) {
             makeContent(file, "fts4(content=\"w\", id, name)", n);
         }},
        {"fts4 on a tower of views, its columns unnamed",
         {4, 2000},
         [](const std::string& file, int n) { makeContent(file, "fts4(content=[w])", n); }},
        {"fts5 on a tower of views",
         {4, 2000},
         [](const std::string& file, int n) {
             makeContent(file, "fts5(id, name, content=w, content_rowid=id)", n);
         }},
        {"fts4 on itself",
         {1},
         [](const std::string& file, int) {
             DatabaseMaker maker(file);
             for (const char* table : {"descriptions", "fault_type_definition"}) {
                 putModule(maker, table, "fts4(content=\"" + std::string(table) + "\", id, name)");
             }
             maker.finish();
         }},
        {"fts5 on itself",
         {1},
         [](const std::string& file, int) {
             DatabaseMaker maker(file);
             addModules(maker, "fts5(id, name, content='')");
             for (const char* table : {"descriptions", "fault_type_definition"}) {
                 maker.run("UPDATE sqlite_master SET sql = " +
                           quoted("CREATE VIRTUAL TABLE " + std::string(table) +
                                  " USING fts5(id, name, content='" + table + "')") +
                           " WHERE name = '" + table + "'");
             }
             maker.finish();
         }},
        {"fts4 on each other",
         {1},
         [](const std::string& file, int) {
             DatabaseMaker maker(file);
             putModule(maker, "descriptions", "fts4(content=\"fault_type_definition\", id, name)");
             putModule(maker, "fault_type_definition", "fts4(content=\"descriptions\", id, name)");
             maker.finish();
         }},
        {"fts4 over each other",
         {2, 8, 15, 1000},
         [](const std::string& file, int n) { makeChain(file, "fts4", n); }},
        {"fts3 over each other",
         {8, 15},
         [](const std::string& file, int n) { makeChain(file, "fts3", n); }},
        {"a view on fts4 on itself",
         {1},
         [](const std::string& file, int) {
             DatabaseMaker maker(file);
             maker.putView("w", "SELECT * FROM descriptions");
             putModule(maker, "descriptions", "fts4(content=\"w\", id, name)");
             maker.finish();
         }},
        {"fts4 whose content is a tower of views",
         {4, 2000},
         [](const std::string& file, int n) {
             makeShadow(file, "fts4(id, name)", "_content",
                        "SELECT 1 AS docid, 2 AS c0id, 3 AS c1name", n);
         }},
        {"fts3 whose content is a tower of views",
         {4, 2000},
         [](const std::string& file, int n) {
             makeShadow(file, "fts3(id, name)", "_content",
                        "SELECT 1 AS docid, 2 AS c0id, 3 AS c1name", n);
         }},
        {"fts4 whose statistics are a tower of views",
         {4, 2000},
         [](const std::string& file, int n) {
             makeShadow(file, "fts4(id, name)", "_stat", "SELECT 0 AS id, x'00' AS value", n);
         }},
        {"fts5 whose configuration is a tower of views",
         {4, 2000},
         [](const std::string& file, int n) {
             makeShadow(file, "fts5(id, name)", "_config", "SELECT 'version' AS k, 4 AS v", n);
         }},
        {"fts5 whose configuration has no end",
         {1},
         [](const std::string& file, int) {
             makeShadow(file, "fts5(id, name)", "_config",
                        "SELECT * FROM (WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 "
                        "FROM n) SELECT 'x' || i AS k, i AS v FROM n)",
                        1);
         }},
        {"fts5 whose content is a tower of views",
         {4, 2000},
         [](const std::string& file, int n) {
             makeShadow(file, "fts5(id, name)", "_content", "SELECT 1 AS id, 2 AS c0, 3 AS c1", n);
         }},
        {"rtree whose rows are a tower of views",
         {4, 2000},
         [](const std::string& file, int n) {
             makeShadow(file, "rtree(id, a, b)", "_rowid", "SELECT 1 AS rowid, 1 AS nodeno", n);
         }},
        {"rtree whose nodes are a tower of views",
         {4, 2000},
         [](const std::string& file, int n) {
             makeShadow(file, "rtree(id, a, b)", "_node",
                        "SELECT 1 AS nodeno, zeroblob(1000) AS data", n);
         }},
        {"rtree whose nodes are a column that doubles",
         {14, 30},
         [](const std::string& file, int n) {
             DatabaseMaker maker(file);
             addModules(maker, "rtree(id, a, b)");
             std::string columns = "nodeno INTEGER PRIMARY KEY, c0";
             for (int i = 1; i <= n; ++i) {
                 columns += numbered(", c# AS (c@ || c@)", i);
             }
             maker.run("UPDATE sqlite_master SET sql = " +
                       quoted("CREATE TABLE descriptions_node(" + columns + ", data AS (c" +
                              std::to_string(n) + "))") +
                       " WHERE name = 'descriptions_node'");
             maker.finish();
         }},
        {"rtree of long nodes",
         {1000, 60000},
         [](const std::string& file, int n) {
             DatabaseMaker maker(file);
             addModules(maker, "rtree(id, a, b)");
             maker.run("UPDATE descriptions_node SET data = randomblob(" + std::to_string(n) + ")");
             maker.finish();
         }},
        {"rtree whose node is its own child",
         {1},
         [](const std::string& file, int) {
             DatabaseMaker maker(file);
             addModules(maker, "rtree(id, a, b)");
             maker.run(
                 "UPDATE descriptions_node SET data = "
                 "CAST(x'00280001' || x'000000000000000100000000ff000000' || "
                 "zeroblob(956) AS BLOB)");
             maker.finish();
         }},
        {"fts4 of many columns",
         {100, 1900},
         [](const std::string& file, int n) {
             std::string columns = "c0";
             for (int i = 1; i < n; ++i) {
                 columns += numbered(", c#", i);
             }
             DatabaseMaker maker(file);
             putModule(maker, "descriptions", "fts4(content=\"t\", " + columns + ")");
             maker.finish();
         }},
        {"fts4 of many prefixes",
         {10, 100000},
         [](const std::string& file, int n) {
             DatabaseMaker maker(file);
             putModule(maker, "descriptions",
                       R"(fts4(content="t", name, prefix=")" + repeated("1", n, ",") + "\")");
             maker.finish();
         }},
        {"fts5 of many prefixes",
         {10, 100000},
         [](const std::string& file, int n) {
             DatabaseMaker maker(file);
             putModule(maker, "descriptions",
                       "fts5(name, content='', prefix='" + repeated("1", n, " ") + "')");
             maker.finish();
         }},
        {"fts4 with a tokenizer by address",
         {1},
         [](const std::string& file, int) {
             DatabaseMaker maker(file);
             putModule(maker, "descriptions", "fts4(name, tokenize=nothing)");
             maker.finish();
         }},
        {"unknown modules, and those of SQLite's own",
         {1},
         [](const std::string& file, int) {
             DatabaseMaker maker(file);
             putModule(maker, "descriptions", "dbstat(main)");
             putModule(maker, "fault_type_definition", "nothing(at, all)");
             maker.finish();
         }},
        {"fts4aux, fts5vocab and dbstat in views",
         {1},
         [](const std::string& file, int) {
             DatabaseMaker maker(file);
             addModules(maker, "fts5(id, name)");
             putModule(maker, "vocab", "fts5vocab(descriptions, instance)");
             maker.putView("w", "SELECT * FROM vocab, dbstat, sqlite_stmt, pragma_table_list");
             maker.finish();
         }},
        {"fts5vocab over itself",
         {1},
         [](const std::string& file, int) {
             DatabaseMaker maker(file);
             putModule(maker, "descriptions", "fts5vocab(descriptions, row)");
             putModule(maker, "fault_type_definition", "fts5vocab(descriptions, instance)");
             maker.finish();
         }},
        {"fts4aux over itself",
         {1},
         [](const std::string& file, int) {
             DatabaseMaker maker(file);
             putModule(maker, "descriptions", "fts4aux(descriptions)");
             putModule(maker, "fault_type_definition", "fts4aux(main, descriptions)");
             maker.finish();
         }},
        {"json_each in views",
         {1},
         [](const std::string& file, int) {
             DatabaseMaker maker(file);
             maker.putTargets("SELECT a.value FROM json_each('[" + repeated("1", 999, ",") +
                              "]') a, json_each('[" + repeated("2", 999, ",") + "]') b");
             maker.finish();
         }},
        {"json_tree in views over each other",
         {4, 14},
         [](const std::string& file, int n) {
             DatabaseMaker maker(file);
             maker.putView("v0", "SELECT '[[1,2],[3,4]]' AS x");
             for (int i = 1; i <= n; ++i) {
                 maker.putView(numbered("v#", i),
                               numbered("SELECT json_group_array(j.value) AS x FROM v@, "
                                        "json_tree(v@.x) j",
                                        i));
             }
             maker.putTargets("SELECT * FROM v" + std::to_string(n));
             maker.finish();
         }},
    };
}
