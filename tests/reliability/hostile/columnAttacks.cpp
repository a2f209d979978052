#include "Attack.h"
#include "support/DatabaseMaker.h"

namespace {

/// Both tables with columns each of which names the one before: `#` stands for a column's own
/// number, `@` for that before.
void makeColumns(const std::string& file, int count, const std::string& column,
                 const std::string& first = "c0")
{
    std::string columns = first;
    for (int i = 1; i <= count; ++i) {
        columns += ", " + numbered(column, i);
    }
    DatabaseMaker maker(file);
    maker.putTable("fault_type_definition", columns);
    maker.putTable("descriptions", columns);
    maker.finish();
}

/// A table with two plain columns and more in its statement.
void makeTables(const std::string& file, const std::string& further)
{
    DatabaseMaker maker(file);
    for (const char* table : {"fault_type_definition", "descriptions"}) {
        maker.putTable(table, "code, id_fault_type" + further);
    }
    maker.finish();
}

/// Honest columns, and an index as it is given, over no rows.
void makeIndexes(const std::string& file, int count, const std::string& what)
{
    DatabaseMaker maker(file);
    maker.addHonestTables();
    for (int i = 0; i < count; ++i) {
        const std::string name = "i" + std::to_string(i);
        maker.run("CREATE INDEX " + name + " ON descriptions(name)");
        maker.run("UPDATE sqlite_master SET sql = " +
                  quoted("CREATE INDEX " + name + " ON descriptions" + numbered(what, i)) +
                  " WHERE name = " + quoted(name));
    }
    maker.finish();
}

}  // namespace

Attacks columnAttacks()
{
    return {
        {"generated columns over each other",
         {3, 14, 100, 1900},
         [](const std::string& file, int n) { makeColumns(file, n, "c# AS (c@)"); }},
        {"generated columns that double",
         {3, 10, 15, 25, 200},
         [](const std::string& file, int n) { makeColumns(file, n, "c# AS (c@ || c@)"); }},
        {"generated columns that double, out of order",
         {10, 25, 200},
         [](const std::string& file, int n) {
             std::string columns = "x";
             for (int i = n; i > 0; --i) {
                 columns += numbered(", c# AS (c@ || c@)", i);
             }
             makeColumns(file, 0, "", "c0, " + columns.substr(3));
         }},
        {"generated columns [\"] that double",
         {15, 25},
         [](const std::string& file, int n) {
             makeColumns(file, n, R"("c""#" AS ([c"@] || [c"@]))", "[c\"0]");
         }},
        {"generated columns with a type that double",
         {10, 25},
         [](const std::string& file, int n) {
             makeColumns(file, n,
                         "c# DECIMAL(1, 2) COLLATE nocase GENERATED ALWAYS AS (c@ || C@) STORED");
         }},
        {"generated columns after constraints that double",
         {10, 25},
         [](const std::string& file, int n) {
             makeColumns(file, n, "'c#' INT CHECK (1) CONSTRAINT k AS (\"c@\" || [C@])");
         }},
        {"generated columns that mention 64 times",
         {2, 3, 4, 10},
         [](const std::string& file, int n) {
             makeColumns(file, n, "c# AS (" + repeated("c@", 64, "||") + ")");
         }},
        {"generated columns by hundreds",
         {100, 1000, 1990},
         [](const std::string& file, int n) { makeColumns(file, n, "c# AS (c0 || c0)"); }},
        {"deep generated columns",
         {90, 190, 900},
         [](const std::string& file, int n) {
             makeColumns(file, 1, "c# AS (" + repeated("c0", n, "+") + ")");
         }},
        {"deep generated columns over each other",
         {2, 10, 14},
         [](const std::string& file, int n) {
             makeColumns(file, n, "c# AS (" + repeated("1+", 90) + "c@)");
         }},
        {"generated columns that double behind a variable with a quote",
         {10, 25, 1900},
         [](const std::string& file, int n) {
             makeColumns(file, n, "c# AS (c@ || c@)", "c0, x DEFAULT ($v('))");
         }},
        {"generated columns that double, with a type called WITH",
         {10, 25},
         [](const std::string& file, int n) {
             makeColumns(file, n, "c# with recursive AS (c@ || c@)");
         }},
        {"views on generated columns that double",
         {3, 8, 15},
         [](const std::string& file, int n) {
             std::string columns = "c0";
             for (int i = 1; i <= n; ++i) {
                 columns += numbered(", c# AS (c@ || c@)", i);
             }
             DatabaseMaker maker(file);
             maker.putTable("g", columns);
             const std::string top = "c" + std::to_string(n);
             maker.putView("w", "SELECT " + top + "||" + top + " AS x FROM g");
             maker.putTargets("SELECT a.x || a.x, b.x || b.x FROM w a, w b");
             maker.finish();
         }},
        {"deep CHECKs",
         {90, 900, 10000},
         [](const std::string& file, int n) {
             makeTables(file, ", CHECK (" + repeated("code", n, "+") + ")");
         }},
        {"deep DEFAULTs",
         {90, 900},
         [](const std::string& file, int n) {
             makeTables(file, ", d DEFAULT (" + repeated("1", n, "+") + ")");
         }},
        {"CHECKs by thousands",
         {1000, 20000},
         [](const std::string& file, int n) {
             makeTables(file, repeated(", CHECK (code + id_fault_type > 3)", n));
         }},
        {"UNIQUE by thousands",
         {1000, 8000},  // more takes longer, as docs/reliability.md says
         [](const std::string& file, int n) {
             std::string constraints;
             for (int i = 0; i < n; ++i) {
                 constraints += ", UNIQUE(";
                 for (int digits = i, k = 0; k < 4; ++k, digits /= 16) {
                     constraints +=
                         std::string(k > 0 ? "," : "") + static_cast<char>('a' + digits % 16);
                 }
                 constraints += ")";
             }
             DatabaseMaker maker(file);
             maker.putTable("descriptions", "a,b,c,d,e,f,g,h,i,j,k,l,m,n,o,p" + constraints);
             maker.finish();
         }},
        {"foreign keys by thousands",
         {1000, 20000},
         [](const std::string& file, int n) {
             makeTables(file, repeated(", FOREIGN KEY (code) REFERENCES descriptions(code)", n));
         }},
        {"columns by thousands",
         {1990, 2500, 50000},
         [](const std::string& file, int n) { makeColumns(file, n, "c#"); }},
        {"indexes by thousands",
         {100, 1000},
         [](const std::string& file, int n) { makeIndexes(file, n, "(id_fault_type, name)"); }},
        {"partial indexes by hundreds",
         {100, 500},
         [](const std::string& file, int n) {
             makeIndexes(file, n,
                         "(name) WHERE id_fault_type > # AND " + repeated("id > 3", 100, " AND "));
         }},
        {"deep partial index",
         {90, 190, 900, 990},
         [](const std::string& file, int n) {
             makeIndexes(file, 1, "(name) WHERE " + repeated("id", n, " AND "));
         }},
        {"deep partial index of ORs",
         {90, 190, 900, 990},
         [](const std::string& file, int n) {
             makeIndexes(file, 1, "(name) WHERE " + repeated("id", n, " OR "));
         }},
        {"deep expression index",
         {90, 190, 900, 990},
         [](const std::string& file, int n) {
             makeIndexes(file, 1, "(" + repeated("id_fault_type", n, "+") + ", id_fault_type)");
         }},
        {"expression index with the key first",
         {10, 90},
         [](const std::string& file, int n) {
             makeIndexes(file, 50, "(+id_fault_type, " + repeated("id + 1", n, ",") + ")");
         }},
        {"deep expressions in the schema only",
         {190, 990},
         [](const std::string& file, int n) {
             DatabaseMaker maker(file);
             maker.addHonestTables();
             maker.putTable("other", "x CHECK (" + repeated("x", n, "+") + "), y AS (" +
                                         repeated("x", n, "+") + "), z DEFAULT (" +
                                         repeated("1", n, "+") + ")");
             maker.finish();
         }},
        {"deep functions in the schema only",
         {40, 300, 990},
         [](const std::string& file, int n) {
             DatabaseMaker maker(file);
             maker.addHonestTables();
             int number = 0;
             for (const char* function : {" -> x", " LIKE x", " ISNULL"}) {
                 const std::string deep = "x" + repeated(function, n);
                 ++number;
                 maker.putTable(numbered("t#", number), "x, y AS (" + deep + ")");
                 maker.putView(numbered("v#", number),
                               "SELECT " + deep + numbered(" FROM t#", number));
             }
             maker.finish();
         }},
        {"collations in the schema only",
         {110, 290, 1000, 25000},
         [](const std::string& file, int n) {
             DatabaseMaker maker(file);
             maker.addHonestTables();
             maker.putView("other", "SELECT x" + repeated(" COLLATE a", n) + " FROM descriptions");
             maker.finish();
         }},
        {"views and triggers beside the tables, by thousands",
         {1000, 20000},
         [](const std::string& file, int n) {
             DatabaseMaker maker(file);
             maker.addHonestTables();
             for (int i = 0; i < n; ++i) {
                 const std::string name = "o" + std::to_string(i);
                 maker.putView(name, "SELECT * FROM descriptions");
                 maker.put("trigger", "g" + name, "descriptions",
                           "CREATE TRIGGER g" + name +
                               " AFTER DELETE ON descriptions BEGIN SELECT 1; END");
             }
             maker.finish();
         }},
    };
}
