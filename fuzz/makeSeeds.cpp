// Makes the inputs from which fuzzing starts: makeSeeds <folder> fills a folder in it for each
// target.

#include <filesystem>
#include <iostream>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "support/database.h"

namespace {

using Named = std::pair<const char*, std::string>;

constexpr const char* ROWS =
    "INSERT INTO fault_type_definition VALUES (17, 'E017', 'error', 3, 5), (18, NULL, '', 0, 1);"
    "INSERT INTO descriptions VALUES (1, 17, 2, 'Overheat', 'Too hot', '', NULL, 'Cool down'),"
    "(2, 17, 3, 'Trop chaud', x'00ff', 4.5, 'a,b', 'it''s')";

const std::vector<Named> RESULTS = {
    {"fault-types",
     "code|alias|type|bug|clear_after_cycle_nr\n17|E017|error|3|5\n18|NULL||0|NULL\n"},
    {"descriptions",
     "id|id_fault_type|id_language|name|short_description|description|comment|remedy\n"
     "1|17|2|Overheat|Too hot||NULL|Cool down\n"},
    {"numbers",
     "code|clear_after_cycle_nr\n4294967295|65535\n4294967296|65536\n-1|+1\n 42|42abc\n|x\n"
     "00017|0x11\n1e3|1.5\n"},
    {"other-columns", "remedy|CODE|code|code|unknown\nfirst|1|2|3|4\n"},
    {"no-rows", "code|alias\n"},
};

const std::vector<Named> SOURCES = {
    {"plain", "code,name\r\n1,a\r\n2,b\r\n"},
    {"quotes", "code,name\r\n1,\"a,\"\"b\"\"\r\nc\"\r\n"},
    {"spreadsheet",
     "\xEF\xBB\xBF"
     "code;name\n\n1;\"a;b\"\n2;"},
    {"mistakes", "code,name\r\n1,a\"b\r\n2,\"a\"b\r\n3,a\rb\r\n4,\"a\r\n"},
};

const std::vector<Named> TRANSLATIONS = {
    {"plain",
     R"(<?xml version="1.0" encoding="UTF-8"?><xliff version="1.2"><file original="a;from=1;to=3">)"
     R"(<body><trans-unit id="1/name" xml:space="preserve"><source>a &amp; b</source>)"
     R"(<target state="translated">c&#13; d</target><note from="alias">E</note></trans-unit>)"
     R"(</body></file></xliff>)"},
    {"other-tools",
     R"(<n:xliff version='1.1'><n:file original=";from=1;to=3"><n:body><n:group><n:trans-unit id='')"
     R"( ><n:source> <!-- c --><![CDATA[<]]></n:source><n:target/></n:trans-unit></n:group>)"
     R"(</n:body></n:file></n:xliff>)"},
    {"mistakes",
     R"(<xliff version="1.2"><file original="a;from=1;to=3"><body><trans-unit><source><g>a</g>)"
     R"(</source></trans-unit></body></file><file/></xliff>)"},
    {"doctype", R"(<!DOCTYPE a [<!ENTITY b "&b;&b;">]><a>&b;</a>)"},
    {"references", R"(<a b="&lt;&#60;&#x3c;">&gt;&apos;&quot;&nbsp;&#0;</a>)"},
};

/// Statements that make one database each.
const std::vector<Named> DATABASES = {
    {"plain", "PRAGMA page_size=512;" + schemaSql() + ROWS},
    {"large-pages", "PRAGMA page_size=4096;" + schemaSql() + ROWS},
    {"utf16", "PRAGMA page_size=512; PRAGMA encoding='UTF-16le';" + schemaSql() + ROWS},
    {"wal", "PRAGMA page_size=512; PRAGMA journal_mode=WAL;" + schemaSql() + ROWS},
    {"auto-vacuum", "PRAGMA page_size=512; PRAGMA auto_vacuum=FULL;" + schemaSql() + ROWS},
    {"overflow-pages",
     "PRAGMA page_size=512;" + schemaSql() + ROWS +
         "; INSERT INTO descriptions VALUES (3, 17, 4, hex(zeroblob(900)), '', '', '', '')"},
    {"many-rows",
     "PRAGMA page_size=512;" + schemaSql() +
         "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 60) "
         "INSERT INTO descriptions SELECT i, 17, i, 'name', NULL, '', '', '' FROM n"},
    {"views",
     "PRAGMA page_size=512; CREATE TABLE t(a, b);"
     "INSERT INTO t VALUES (17, 'x'), (18, 'y');"
     "CREATE VIEW fault_type_definition AS SELECT a AS code, b AS alias FROM t ORDER BY b;"
     "CREATE VIEW descriptions AS SELECT a AS id, a AS id_fault_type, upper(b) AS name FROM t"},
    {"without-rowid",
     "PRAGMA page_size=512;"
     "CREATE TABLE fault_type_definition(alias, code PRIMARY KEY) WITHOUT ROWID;"
     "INSERT INTO fault_type_definition VALUES ('x', 17);"
     "CREATE TABLE descriptions(name, id_fault_type AS (17), id)"},
    {"no-tables", "PRAGMA page_size=512; CREATE TABLE t(a)"},
};

/// How long the inputs are that drive a grammar; of each length there are as many.
constexpr std::size_t CHOICES[] = {10, 40, 200, 1000, 6000};
constexpr int SEEDS_OF_A_LENGTH = 6;

std::string choices(std::size_t count, std::minstd_rand& random)
{
    std::string bytes;
    while (bytes.size() < count) {
        bytes += static_cast<char>(random() % 240);
    }
    return bytes;
}

}  // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::cerr << "usage: makeSeeds FOLDER\n";
        return 2;
    }
    const std::filesystem::path folder = argv[1];
    std::filesystem::remove_all(folder);
    for (const auto& [name, text] : RESULTS) {
        std::filesystem::create_directories(folder / "decoder");
        setContents(folder / "decoder" / name, text);
    }
    for (const auto& [name, text] : SOURCES) {
        std::filesystem::create_directories(folder / "csv");
        setContents(folder / "csv" / name, text);
    }
    for (const auto& [name, text] : TRANSLATIONS) {
        std::filesystem::create_directories(folder / "xliff");
        setContents(folder / "xliff" / name, text);
    }
    for (const auto& [name, sql] : DATABASES) {
        std::filesystem::create_directories(folder / "databaseFile");
        runSql(folder / "databaseFile" / name, sql);
    }
    std::filesystem::create_directories(folder / "schema");
    std::minstd_rand random;
    for (const std::size_t length : CHOICES) {
        for (int i = 0; i < SEEDS_OF_A_LENGTH; ++i) {
            const std::string name = std::to_string(length) + "-" + std::to_string(i);
            setContents(folder / "schema" / name, choices(length, random));
        }
    }
    return 0;
}
