#include "honestFiles.h"

#include "support/DatabaseMaker.h"

namespace {

/// What the views below are made of: faults, and their texts in a table of single texts.
constexpr const char* PARTS =
    "CREATE TABLE fault(number INTEGER PRIMARY KEY, short, kind);"
    "CREATE TABLE language(id INTEGER PRIMARY KEY, code);"
    "CREATE TABLE text(fault, language, field, value, PRIMARY KEY (fault, language, field));"
    "INSERT INTO fault WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n LIMIT 40) "
    "SELECT i, 'E' || i, CASE i % 3 WHEN 0 THEN 'error' ELSE 'warning' END FROM n;"
    "INSERT INTO language VALUES (1, 'en'), (2, 'fr'), (3, 'de');"
    "INSERT INTO text SELECT number, id, field, code || ' ' || field || ' ' || number FROM fault, "
    "language, (SELECT 'name' AS field UNION ALL SELECT 'line' UNION ALL SELECT 'remedy');";

constexpr const char* FAULT_TYPES =
    "SELECT number AS code, short AS alias, kind AS type, 3 AS bug, 1 AS clear_after_cycle_nr FROM "
    "fault";

/// Views over the parts in the place of both tables.
void makeViews(const std::string& file, const std::string& furtherSql,
               const std::string& descriptions)
{
    DatabaseMaker maker(file);
    maker.run(PARTS + furtherSql);
    maker.putView("fault_type_definition", FAULT_TYPES);
    maker.putView("descriptions", descriptions);
    maker.finish();
}

void makeTables(const std::string& file, const std::string& furtherSql,
                const std::string& encoding = "UTF-8")
{
    DatabaseMaker maker(file, encoding);
    maker.addHonestTables();
    maker.run(furtherSql);
    maker.finish();
}

/// Both tables, with something in the schema beside them.
void makeBeside(const std::string& file, const std::string& type, const std::string& name,
                const std::string& statement)
{
    DatabaseMaker maker(file);
    maker.addHonestTables();
    maker.put(type, name, name, statement);
    maker.finish();
}

std::string rows(int count)
{
    return "WITH RECURSIVE n(i) AS (SELECT 3 UNION ALL SELECT i + 1 FROM n LIMIT " +
           std::to_string(count) + ") ";
}

constexpr const char* REST = "'' AS short_description, '' AS description, '' AS comment, ";

}  // namespace

std::vector<HonestFile> honestFiles()
{
    return {
        {"the two tables", true, [](const std::string& file) { makeTables(file, ""); }},
        {"the two tables in UTF-16", true,
         [](const std::string& file) { makeTables(file, "", "UTF-16le"); }},
        {"analysed tables", true, [](const std::string& file) { makeTables(file, "ANALYZE"); }},
        {"65,535 rows", true,
         [](const std::string& file) {
             makeTables(file, "INSERT INTO descriptions " + rows(65533) +
                                  "SELECT i, i, 1, 'name ' || i, 'short', 'text', '', 'remedy' "
                                  "FROM n");
         }},
        {"a text of almost 16 MiB", true,
         [](const std::string& file) {
             makeTables(file,
                        "UPDATE descriptions SET remedy = hex(zeroblob(8388000)) WHERE id = 1");
         }},
        {"a table of 2,000 columns", true,
         [](const std::string& file) {
             std::string columns;
             for (int i = 0; i < 1992; ++i) {
                 columns += numbered(", c# DEFAULT 'x'", i);
             }
             DatabaseMaker maker(file);
             maker.addHonestTables();
             maker.run(
                 "ALTER TABLE descriptions RENAME TO d; DROP INDEX "
                 "descriptions_id_fault_type; CREATE TABLE descriptions(id, id_fault_type, "
                 "id_language, name, short_description, description, comment, remedy" +
                 columns +
                 "); INSERT INTO descriptions(id, id_fault_type, id_language, name, "
                 "short_description, description, comment, remedy) SELECT * FROM d");
             maker.finish();
         }},
        {"indexes, checks, defaults, keys and triggers", true,
         [](const std::string& file) {
             makeTables(
                 file,
                 "CREATE INDEX a ON descriptions(id_language, lower(name)) WHERE name <> '';"
                 "CREATE UNIQUE INDEX b ON fault_type_definition(alias COLLATE nocase);"
                 "CREATE TABLE log(at DEFAULT (1 + 2), x CHECK (x > 0 AND x < 9), y REFERENCES "
                 "descriptions(id));"
                 "CREATE TRIGGER c AFTER DELETE ON descriptions BEGIN INSERT INTO log(x) VALUES "
                 "(1); END");
         }},
        {"a generated column", true,
         [](const std::string& file) {
             makeTables(file,
                        "CREATE TABLE other(a, b AS (upper(a) || ' ' || a), c AS (b || a) STORED);"
                        "INSERT INTO other(a) VALUES ('x')");
         }},
        {"a view of one table", true,
         [](const std::string& file) {
             makeViews(file, "",
                       std::string("SELECT rowid AS id, fault AS id_fault_type, language AS "
                                   "id_language, value AS name, ") +
                           REST + "'' AS remedy FROM text");
         }},
        {"a join of three tables", true,
         [](const std::string& file) {
             makeViews(
                 file, "",
                 "SELECT n.rowid AS id, n.fault AS id_fault_type, l.id AS id_language, n.value AS "
                 "name, s.value AS short_description, '' AS description, l.code AS comment, "
                 "coalesce(r.value, '-') AS remedy FROM text n JOIN language l ON l.id = "
                 "n.language LEFT JOIN text s ON s.fault = n.fault AND s.language = l.id AND "
                 "s.field = 'line' LEFT JOIN text r ON r.fault = n.fault AND r.language = l.id AND "
                 "r.field = 'remedy' WHERE n.field = 'name' ORDER BY n.fault, l.code DESC");
         }},
        {"a pivot by scalar subqueries", false,
         [](const std::string& file) {
             const auto field = [](const std::string& name) {
                 return "(SELECT value FROM text t WHERE t.fault = f.number AND t.language = l.id "
                        "AND t.field = '" +
                        name + "')";
             };
             makeViews(file, "",
                       "SELECT f.number * 10 + l.id AS id, f.number AS id_fault_type, l.id AS "
                       "id_language, " +
                           field("name") + " AS name, " + field("line") +
                           " AS short_description, '' AS description, '' AS comment, " +
                           field("remedy") + " AS remedy FROM fault f, language l");
         }},
        {"a pivot by aggregates", false,
         [](const std::string& file) {
             makeViews(file, "",
                       "SELECT min(rowid) AS id, fault AS id_fault_type, language AS id_language, "
                       "max(CASE field WHEN 'name' THEN value END) AS name, max(CASE field WHEN "
                       "'line' THEN value END) AS short_description, group_concat(field, '/') AS "
                       "description, count(*) AS comment, max(CASE field WHEN 'remedy' THEN value "
                       "END) AS remedy FROM text GROUP BY fault, language HAVING count(*) > 1");
         }},
        {"a UNION of a table for each language", false,
         [](const std::string& file) {
             std::string tables;
             std::string select;
             for (int i = 1; i <= 12; ++i) {
                 tables += numbered(
                     "CREATE TABLE texts#(id INTEGER PRIMARY KEY, name, remedy);"
                     "INSERT INTO texts# SELECT number, 'name #', short FROM fault;",
                     i);
                 select += (i > 1 ? " UNION ALL " : "") +
                           numbered(
                               "SELECT id + 100 * # AS id, id AS id_fault_type, # AS "
                               "id_language, name, ",
                               i) +
                           REST + numbered("remedy FROM texts#", i);
             }
             makeViews(file, tables, select);
         }},
        {"views four high", false,
         [](const std::string& file) {
             makeViews(
                 file,
                 "CREATE VIEW names AS SELECT fault, language, value AS name FROM text WHERE field "
                 "= 'name';"
                 "CREATE VIEW named AS SELECT f.number, f.kind, n.language, n.name FROM fault f "
                 "JOIN names n ON n.fault = f.number;"
                 "CREATE VIEW localised AS SELECT d.*, l.code, upper(l.code) || ': ' || d.name AS "
                 "title FROM named d JOIN language l ON l.id = d.language;",
                 "SELECT number * 10 + language AS id, number AS id_fault_type, language AS "
                 "id_language, title AS name, code AS short_description, CASE kind WHEN 'error' "
                 "THEN 'bad' ELSE kind END AS description, name AS comment, '' AS remedy FROM "
                 "localised ORDER BY number, language");
         }},
        {"views four high of which each aggregates", false,
         [](const std::string& file) {
             makeViews(
                 file,
                 "CREATE VIEW a AS SELECT fault, language, field, max(value) AS value FROM text "
                 "GROUP BY fault, language, field;"
                 "CREATE VIEW b AS SELECT fault, language, group_concat(value) AS value FROM a "
                 "GROUP BY fault, language;"
                 "CREATE VIEW c AS SELECT fault, count(*) AS n, min(value) AS value FROM b GROUP "
                 "BY fault;",
                 std::string("SELECT fault AS id, fault AS id_fault_type, n AS id_language, value "
                             "AS name, ") +
                     REST + "'' AS remedy FROM c");
         }},
        {"common table expressions", false,
         [](const std::string& file) {
             makeViews(file, "",
                       std::string(
                           "WITH names AS (SELECT fault, language, value FROM text WHERE field = "
                           "'name'), remedies AS (SELECT fault, language, value FROM text WHERE "
                           "field = 'remedy'), both AS (SELECT n.fault, n.language, n.value AS "
                           "name, r.value AS remedy FROM names n JOIN remedies r USING (fault, "
                           "language)) SELECT row_number() OVER (ORDER BY fault, language) AS id, "
                           "fault AS id_fault_type, language AS id_language, name, ") +
                           REST + "remedy FROM both");
         }},
        {"a recursive common table expression", false,
         [](const std::string& file) {
             makeViews(file, "",
                       std::string("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n "
                                   "WHERE i < 40) SELECT i AS id, i AS id_fault_type, 1 AS "
                                   "id_language, short AS name, ") +
                           REST + "'' AS remedy FROM n JOIN fault ON number = i");
         }},
        {"65,000 rows that share 100 texts", false,
         [](const std::string& file) {
             makeViews(file,
                       "CREATE TABLE shared(id INTEGER PRIMARY KEY, value);"
                       "INSERT INTO shared SELECT number, hex(zeroblob(600)) FROM fault;"
                       "CREATE TABLE use(id INTEGER PRIMARY KEY, shared);"
                       "INSERT INTO use " +
                           rows(65000) + "SELECT i, 1 + i % 40 FROM n;",
                       std::string("SELECT u.id, u.shared AS id_fault_type, 1 AS id_language, "
                                   "s.value AS name, ") +
                           REST + "'' AS remedy FROM use u JOIN shared s ON s.id = u.shared");
         }},
        {"beside a tower of views", false,
         [](const std::string& file) {
             DatabaseMaker maker(file);
             maker.addHonestTables();
             maker.putView("v0", "SELECT x FROM t");
             for (int i = 1; i < 2000; ++i) {
                 maker.putView(numbered("v#", i), numbered("SELECT x || x AS x FROM v@", i));
             }
             maker.finish();
         }},
        {"beside generated columns that double", false,
         [](const std::string& file) {
             std::string columns = "c0";
             for (int i = 1; i <= 30; ++i) {
                 columns += numbered(", c# AS (c@ || c@)", i);
             }
             makeTables(file, "");
             runSql(file, "CREATE TABLE other(" + columns + ")");
         }},
        {"beside an endless view", true,
         [](const std::string& file) {
             makeBeside(file, "view", "w",
                        "CREATE VIEW w AS WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 "
                        "FROM n) SELECT * FROM n");
         }},
        {"beside a compound of 400 terms", false,
         [](const std::string& file) {
             makeBeside(file, "view", "w",
                        "CREATE VIEW w AS " + repeated("SELECT x FROM t", 400, " UNION ALL "));
         }},
        {"beside an expression 150 deep", false,
         [](const std::string& file) {
             makeBeside(file, "view", "w",
                        "CREATE VIEW w AS SELECT " + repeated("x", 150, "+") + " FROM t");
         }},
        {"beside a virtual table on itself", true,
         [](const std::string& file) {
             makeBeside(file, "table", "w", "CREATE VIRTUAL TABLE w USING fts4(content=\"w\", a)");
         }},
        {"beside a long comment", false,
         [](const std::string& file) {
             makeBeside(file, "view", "w",
                        "CREATE VIEW w AS SELECT 1 /*" + std::string(200000, '*') + "*/");
         }},
    };
}
