// A schema in valid pages, written by a grammar that the input drives: opened, asked every kind of
// question, closed, each within the time and the memory that are promised.

#include <pthread.h>
#include <sqlite3.h>

#include <algorithm>
#include <filesystem>
#include <iostream>
#include <string>
#include <vector>

#include "Grammar.h"
#include "expect.h"
#include "support/DatabaseMaker.h"
#include "support/QuickClock.h"
#include "support/TempDir.h"
#include "target.h"
#include "zav/DescriptionDb.h"

namespace {

constexpr int CLOCK_SPEED = 50;
constexpr double PROMISED_SECONDS = 10.0 / CLOCK_SPEED;
constexpr double SLACK_SECONDS = 4;

constexpr long long MIB = 1024LL * 1024;

/// What SQLite takes besides: the pages of the file, and one row on its way.
constexpr long long SLACK_BYTES = 64 * MIB;

constexpr std::size_t SMALL_STACK = 64UL * 1024;

void addObject(DatabaseMaker& maker, Grammar& grammar, int& views)
{
    const std::string view = "v" + std::to_string(views);
    switch (grammar.choose(10)) {
    case 1:
        maker.put("index", "i" + view, "descriptions",
                  "CREATE INDEX i" + view + " ON t(" + grammar.expression() + ") WHERE " +
                      grammar.expression());
        break;
    case 2:
        maker.put("table", "o" + view, "o" + view,
                  "CREATE VIRTUAL TABLE o" + view + " USING " + grammar.module(views));
        break;
    case 3:
        maker.put("trigger", "g" + view, "t",
                  "CREATE TRIGGER g" + view + " AFTER DELETE ON t BEGIN " + grammar.select(views) +
                      "; END");
        break;
    default:
        maker.putView(view, grammar.select(views));
        ++views;
    }
}

void addTarget(DatabaseMaker& maker, Grammar& grammar, const std::string& name, int views)
{
    switch (grammar.choose(6)) {
    case 1:
        maker.putTable(name, grammar.columns());
        break;
    case 2:
        maker.put("table", name, name,
                  "CREATE VIRTUAL TABLE " + name + " USING " + grammar.module(views));
        break;
    case 3:
        maker.putTable(name, "x, " + ('"' + grammar.expression() + '"'));
        break;
    default:
        maker.putView(name, grammar.select(views));
    }
}

void makeFile(const std::string& file, Grammar grammar)
{
    DatabaseMaker maker(file, grammar.choose(8) == 1 ? "UTF-16le" : "UTF-8");
    maker.run("ALTER TABLE t ADD COLUMN y; INSERT INTO t VALUES (3, 'a'), ('[[1],2]', 4)");
    maker.putTable("g", grammar.columns());
    int views = 0;
    do {
        addObject(maker, grammar, views);
    } while (!grammar.hasEnded() && views < 400);
    addTarget(maker, grammar, "fault_type_definition", views);
    addTarget(maker, grammar, "descriptions", views);
    maker.finish();
}

template <class Call>
void expectWithinPromise(long long fileSize, const Call& call)
{
    sqlite3_memory_highwater(1);
    const double before = processorSeconds();
    call();
    expect(processorSeconds() - before < PROMISED_SECONDS + SLACK_SECONDS, "as long as promised");
    expect(sqlite3_memory_highwater(0) < std::max(128 * MIB, 64 * fileSize) + SLACK_BYTES,
           "as much memory as promised");
}

void askAll(const std::string& file)
{
    const QuickClock clock(CLOCK_SPEED);
    const auto size = static_cast<long long>(std::filesystem::file_size(file));
    DescriptionDb& service = *DescriptionDb::getInstance();
    std::vector<FaultTypeDef> faultTypes;
    std::vector<Descriptions> descriptions;
    FaultTypeDef faultType;
    expectWithinPromise(size, [&] { expect(service.openDb(file, true) == 0, "any file opens"); });
    expectWithinPromise(size, [&] { service.getFaultTypeDefTbl(faultTypes); });
    expectWithinPromise(size, [&] { service.getFaultTypeDef(3, faultType); });
    expectWithinPromise(size, [&] { service.getDescriptionsTbl(descriptions); });
    expectWithinPromise(size, [&] { service.getDescriptionsByFC(3, descriptions); });
    expect(service.closeDb() == 0, "the database closes");
}

void* runOnSmallStack(void* file)
{
    askAll(*static_cast<std::string*>(file));
    return nullptr;
}

void askAllOnSmallStack(std::string& file)
{
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    pthread_attr_setstacksize(&attributes, SMALL_STACK);
    pthread_t thread = {};
    expect(pthread_create(&thread, &attributes, runOnSmallStack, &file) == 0, "a thread starts");
    pthread_join(thread, nullptr);
    pthread_attr_destroy(&attributes);
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    std::cout.setstate(std::ios_base::badbit);  // no lines: they are not what is tried
    static const TempDir dir;
    static std::string file = dir.file("input.db");
    Grammar grammar(data, size);
    const bool isOnSmallStack = grammar.choose(2) == 1;
    std::filesystem::remove(file);
    makeFile(file, grammar);
    if (isOnSmallStack) {
        askAllOnSmallStack(file);
    } else {
        askAll(file);
    }
    return 0;
}
