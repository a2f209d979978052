// A database all of whose rows say in which update they were written:
//
//     generations make FILE GENERATION [TEXTS]                    makes the file
//     generations update FILE MODE SYNCHRONOUS GENERATION COUNT   makes so many updates, from that
//     on generations abandon FILE MODE GENERATION                    dies in the middle of an
//     update generations read FILE                                       says which one it finds
//
// An update says "begun" and "committed" with its generation. Reading goes through DescriptionDb
// and through SQLite alone; it ends with 1, saying why, unless both find the same one generation,
// whole, in a sound file.

#include <cstdlib>
#include <exception>
#include <iostream>
#include <sstream>
#include <string>
#include <vector>

#include "reliability/replay/Reading.h"
#include "support/database.h"

namespace {

constexpr int FAULT_TYPES = 20;
constexpr int TEXTS = 80;
constexpr int ASKED_FOR = 3;  // the fault type that Reading looks up

std::string makingSql(const std::string& generation, const std::string& texts)
{
    std::ostringstream sql;
    sql << "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < "
        << FAULT_TYPES << ") INSERT INTO fault_type_definition SELECT i, 'FAULT_' || i, 'error', "
        << generation << ", 1 FROM n;"
        << "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < " << texts
        << ") INSERT INTO descriptions SELECT i, (i - 1) % " << FAULT_TYPES << " + 1, (i - 1) / "
        << FAULT_TYPES << " + 1, " << generation << ", '', '', '', hex(zeroblob(400)) FROM n";
    return sql.str();
}

/// With so small a page cache that pages go to the disk before the commit.
void prepare(OpenFile& writer, const std::string& mode, const std::string& synchronous)
{
    writer.run("PRAGMA journal_mode=" + mode + "; PRAGMA synchronous=" + synchronous +
               "; PRAGMA cache_size=10; PRAGMA cache_spill=ON; PRAGMA wal_autocheckpoint=200");
}

std::string updatingSql(const std::string& generation)
{
    return "BEGIN IMMEDIATE; UPDATE fault_type_definition SET bug = " + generation +
           "; UPDATE descriptions SET name = " + generation + ";";
}

void update(const std::string& file, const std::string& mode, const std::string& synchronous,
            long generation, long count)
{
    OpenFile writer(file);
    prepare(writer, mode, synchronous);
    for (const long end = generation + count; generation < end; ++generation) {
        std::cout << "begun " << generation << std::endl;
        writer.run(updatingSql(std::to_string(generation)) + "COMMIT");
        std::cout << "committed " << generation << std::endl;
    }
}

[[noreturn]] void abandon(const std::string& file, const std::string& mode,
                          const std::string& generation)
{
    OpenFile writer(file);
    prepare(writer, mode, "FULL");
    writer.run(updatingSql(generation));
    std::_Exit(0);
}

std::string faultTypeLine(int code, const std::string& generation)
{
    const std::string number = std::to_string(code);
    return number + "|FAULT_" + number + "|error|" + generation + "|1|\n";
}

std::string textLine(int id, const std::string& generation)
{
    return std::to_string(id) + '|' + std::to_string((id - 1) % FAULT_TYPES + 1) + '|' +
           std::to_string((id - 1) / FAULT_TYPES + 1) + '|' + generation + "||||" +
           std::string(800, '0') + "|\n";
}

/// What Reading finds in a whole file of a generation.
std::string wholeText(const std::string& generation)
{
    std::string text;
    for (int code = 1; code <= FAULT_TYPES; ++code) {
        text += faultTypeLine(code, generation);
    }
    for (int id = 1; id <= TEXTS; ++id) {
        text += textLine(id, generation);
    }
    text += faultTypeLine(ASKED_FOR, generation);
    for (int id = ASKED_FOR; id <= TEXTS; id += FAULT_TYPES) {
        text += textLine(id, generation);
    }
    return text;
}

std::string generationOf(const std::string& text)
{
    std::istringstream line(text.substr(0, text.find('\n')));
    std::string cell;
    for (int column = 0; column < 4; ++column) {
        std::getline(line, cell, '|');
    }
    return cell;
}

/// @return what is wrong; empty if nothing is.
std::string faultOf(const Reading& read, const Reading& plain, const std::string& file)
{
    if (!read.hasSucceeded) {
        return (plain.hasSucceeded ? "refused: " : "refused, as SQLite does: ") + read.text;
    }
    if (!plain.hasSucceeded) {
        return "read, but SQLite alone says: " + plain.text;
    }
    if (read.text != plain.text) {
        return "read otherwise than by SQLite alone";
    }
    if (read.text != wholeText(generationOf(read.text))) {
        return "neither old nor new";
    }
    return isSound(file) ? "" : "not sound";
}

int readGeneration(const std::string& file)
{
    const Reading read = readThroughService(file);
    const std::string fault = faultOf(read, readThroughSqlite(file), file);
    if (!fault.empty()) {
        std::cout << fault << "\n";
        return 1;
    }
    std::cout << "generation " << generationOf(read.text) << "\n";
    return 0;
}

int run(const std::vector<std::string>& words)
{
    if ((words.size() == 3 || words.size() == 4) && words[0] == "make") {
        makeDatabase(words[1],
                     makingSql(words[2], words.size() == 4 ? words[3] : std::to_string(TEXTS)));
        return 0;
    }
    if (words.size() == 6 && words[0] == "update") {
        update(words[1], words[2], words[3], std::atol(words[4].c_str()),
               std::atol(words[5].c_str()));
        return 0;
    }
    if (words.size() == 4 && words[0] == "abandon") {
        abandon(words[1], words[2], words[3]);
    }
    if (words.size() == 2 && words[0] == "read") {
        return readGeneration(words[1]);
    }
    std::cerr << "usage: generations make|update|abandon|read FILE ...\n";
    return 2;
}

}  // namespace

int main(int argc, char** argv)
{
    try {
        return run({argv + 1, argv + argc});
    } catch (const std::exception& failure) {
        std::cout << failure.what() << "\n";
        return 3;
    }
}
