#include "support/generations.h"

#include <unistd.h>

#include <vector>

#include "support/database.h"
#include "zav/Descriptions.h"
#include "zav/ZavSqlDescriptionsTbl.h"

namespace {

// Some 200 pages, of which the cache of updateWithoutCommit() holds ten.
constexpr const char* ROWS =
    "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 1000)"
    "INSERT INTO descriptions(id_fault_type, id_language, name, remedy) "
    "SELECT i, 1, 0, hex(zeroblob(400)) FROM n";

constexpr useconds_t PAUSE_US = 2000;

}  // namespace

std::string makeGenerations(const std::string& file, const std::string& journalMode)
{
    makeDatabase(file, ROWS);
    runSql(file, "PRAGMA journal_mode=" + journalMode);
    return file;
}

void updateWithoutCommit(const std::string& file, const ChildProcess::Signal& signal)
{
    OpenFile writer(file);
    writer.run(
        "PRAGMA cache_size=10; PRAGMA cache_spill=ON;"
        "BEGIN IMMEDIATE; UPDATE descriptions SET name = 1");
    signal();
    for (;;) {
        pause();
    }
}

bool killWriter(const std::string& file)
{
    ChildProcess writer(
        [&file](const ChildProcess::Signal& signal) { updateWithoutCommit(file, signal); });
    const bool hasBegun = writer.waitForSignal();
    writer.kill();
    return hasBegun;
}

void updateForever(const std::string& file, const ChildProcess::Signal& signal)
{
    OpenFile writer(file);
    writer.run("PRAGMA synchronous=OFF");  // no power is cut here, and a slow disk slows the tests
    for (;;) {
        writer.run("UPDATE descriptions SET name = name + 1");
        signal();
        // SQLite gives the lock to whoever asks first: without a pause, mostly to this writer.
        usleep(PAUSE_US);
    }
}

Generations readGenerations(Sqlite3Db& db)
{
    ZavSqlDescriptionsTbl table("descriptions");
    std::vector<Descriptions> records;
    Generations read{db.getTbl("SELECT * FROM \"descriptions\"", records, &table), {}};
    for (const Descriptions& record : records) {
        read.texts.insert(record.name);
    }
    return read;
}
