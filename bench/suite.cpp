// The benchmarks behind docs/benchmarks.md; scripts/bench runs them and writes that page from their
// JSON output.
//
//     zav_bench_suite --benchmark_out=FILE
//
// What is compared runs in turn, in one process and on one file: each iteration of a benchmark runs
// every contender once. The counters are medians, of the times and of the ratios within the turns,
// which a machine that is busy for a while disturbs little.

#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <functional>
#include <iostream>
#include <map>
#include <set>
#include <sstream>

#include "Reader.h"
#include "database.h"
#include "sqliteConnection.h"
#include "statementText.h"
#include "support/TempDir.h"
#include "support/runProgram.h"

namespace {

using Nanoseconds = double;

Nanoseconds timeOf(const std::function<void()>& action)
{
    const auto start = std::chrono::steady_clock::now();
    action();
    return std::chrono::duration<double, std::nano>(std::chrono::steady_clock::now() - start)
        .count();
}

double median(std::vector<double> values)
{
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

/// One of those that are compared: runs once and says how long it took.
struct Contender {
    std::string name;
    std::function<Nanoseconds()> run;
};

/// Runs the contenders in turn. Every ratio is to the one that is named.
void runInTurn(benchmark::State& state, const std::vector<Contender>& contenders,
               const std::string& base)
{
    std::map<std::string, std::vector<double>> times;
    std::map<std::string, std::vector<double>> ratios;
    std::size_t first = 0;
    for (auto iteration : state) {
        static_cast<void>(iteration);
        for (std::size_t i = 0; i < contenders.size(); ++i) {  // each goes first in its turn
            const Contender& contender = contenders[(first + i) % contenders.size()];
            times[contender.name].push_back(contender.run());
        }
        ++first;
        for (const Contender& contender : contenders) {
            ratios[contender.name].push_back(times[contender.name].back() / times[base].back());
        }
    }
    for (const Contender& contender : contenders) {
        state.counters[contender.name + " ns"] = median(times[contender.name]);
        state.counters[contender.name + " ratio"] = median(ratios[contender.name]);
    }
}

/// @return whether a reader takes part here; the one without locks is for counting instructions.
bool takesPart(const ReaderKind& kind)
{
    return kind.open != openUnlockedTable;
}

/// Runs one of the programs beside this one.
/// @return the last number that it prints: of `zav_ask` the time of the first read, of a program
///         whose name ends in `_heap` the peak of the heap.
double lastNumberOf(const std::string& program, std::vector<std::string> arguments)
{
    arguments.insert(arguments.begin(), std::string(ZAV_BENCH_DIR) + "/" + program);
    const ProgramResult result = runProgram(arguments);
    if (result.exitStatus != 0) {
        throw std::runtime_error(program + " failed for " + arguments[1]);
    }
    double last = 0;
    std::istringstream lines(result.output);
    for (double number = 0; lines >> number;) {
        last = number;
    }
    return last;
}

/// What an answer, or the opening alone, takes of the heap.
///
/// @param times  0 for the opening alone.
void measureHeap(benchmark::State& state, const QuestionKind& question, int code, int times,
                 const std::string& file)
{
    for (const ReaderKind& kind : READERS) {
        if (takesPart(kind)) {
            state.counters[std::string(kind.name) + " heap"] = lastNumberOf(
                "zav_ask_heap",
                {kind.name, question.name, std::to_string(code), std::to_string(times), file});
        }
    }
}

void read(benchmark::State& state, const QuestionKind& question, int faultTypes,
          const std::string& file)
{
    const auto code = static_cast<unsigned short>(codeToLookUp(faultTypes));
    std::vector<std::unique_ptr<Reader>> readers;
    std::vector<Contender> contenders;
    for (const ReaderKind& kind : READERS) {
        if (!takesPart(kind)) {
            continue;
        }
        readers.push_back(kind.open(file));
        Reader& reader = *readers.back();
        state.counters["rows"] = static_cast<double>(reader.ask(question.question, code));
        contenders.push_back({kind.name, [&reader, &question, code] {
                                  return timeOf([&] { reader.ask(question.question, code); });
                              }});
    }
    runInTurn(state, contenders, "table");
    measureHeap(state, question, code, 1, file);
}

/// The service and the bare table alone.
void readWithBareTable(benchmark::State& state, const QuestionKind& question, int faultTypes,
                       const std::string& file)
{
    const auto code = static_cast<unsigned short>(codeToLookUp(faultTypes));
    const std::unique_ptr<Reader> zav = openZav(file);
    const std::unique_ptr<Reader> table = openTable(file);
    const auto ask = [&question, code](Reader& reader) {
        return timeOf([&] { reader.ask(question.question, code); });
    };
    runInTurn(state, {{"zav", [&] { return ask(*zav); }}, {"table", [&] { return ask(*table); }}},
              "table");
}

void firstRead(benchmark::State& state, const QuestionKind& question, int faultTypes,
               const std::string& file)
{
    const int code = codeToLookUp(faultTypes);
    std::vector<Contender> contenders;
    for (const ReaderKind& kind : READERS) {
        if (takesPart(kind)) {
            contenders.push_back(
                {kind.name, [&kind, &question, code, &file] {
                     return lastNumberOf(
                         "zav_ask", {kind.name, question.name, std::to_string(code), "1", file});
                 }});
        }
    }
    runInTurn(state, contenders, "table");
    measureHeap(state, question, code, 1, file);
}

void openAndClose(benchmark::State& state, const std::string& file)
{
    std::vector<Contender> contenders;
    for (const ReaderKind& kind : READERS) {
        if (takesPart(kind)) {
            contenders.push_back(
                {kind.name, [&kind, &file] { return timeOf([&] { kind.open(file); }); }});
        }
    }
    runInTurn(state, contenders, "table");
    measureHeap(state, QUESTIONS[0], 0, 0, file);
}

void statementText(benchmark::State& state)
{
    constexpr int TEXTS = 100;  // so that reading the clock does not count
    std::vector<Contender> contenders;
    for (const StatementKind& kind : STATEMENTS) {
        const auto writeTexts = [&kind] {
            for (int i = 0; i < TEXTS; ++i) {
                benchmark::DoNotOptimize(kind.write());
            }
        };
        contenders.push_back({kind.name, [writeTexts] { return timeOf(writeTexts) / TEXTS; }});
        state.counters[std::string(kind.name) + " heap"] =
            lastNumberOf("zav_write_statement_heap", {kind.name});
    }
    runInTurn(state, contenders, "sqlite3_mprintf");
}

/// A lookup without an index, with page caches of different sizes, in KiB.
void pageCache(benchmark::State& state, int faultTypes, const std::string& file)
{
    const std::string sql =
        "SELECT * FROM \"descriptions\" WHERE id_fault_type=" + std::to_string(faultTypes / 2);
    std::vector<SqliteConnection> connections;
    std::vector<Contender> contenders;
    for (const int kib : {2000, 8192, 16384, 20480, 32768}) {
        connections.push_back(openConnection(file));
        sqlite3* const db = connections.back().get();
        check(sqlite3_exec(db, ("PRAGMA cache_size=-" + std::to_string(kib)).c_str(), nullptr,
                           nullptr, nullptr),
              db);
        const auto lookUp = [db, sql] {
            char** result = nullptr;
            check(sqlite3_get_table(db, sql.c_str(), &result, nullptr, nullptr, nullptr), db);
            sqlite3_free_table(result);
        };
        lookUp();
        int used = 0;
        int highest = 0;
        sqlite3_db_status(db, SQLITE_DBSTATUS_CACHE_USED, &used, &highest, 0);
        state.counters[std::to_string(kib) + " heap"] = used;
        contenders.push_back({std::to_string(kib), [lookUp] { return timeOf(lookUp); }});
    }
    state.counters["file"] = static_cast<double>(std::filesystem::file_size(file));
    runInTurn(state, contenders, "2000");
}

/// Shows how far the run is.
class Progress : public benchmark::BenchmarkReporter {
public:
    explicit Progress(std::size_t count) : m_count(count) {}
    bool ReportContext(const Context& /*context*/) override { return true; }
    void ReportRuns(const std::vector<Run>& runs) override
    {
        std::cerr << "[" << ++m_done << "/" << m_count << "] " << runs.front().benchmark_name()
                  << "\n";
    }

private:
    std::size_t m_done = 0;
    const std::size_t m_count;
};

/// How many turns a file of that size gets, for a run of a few minutes.
int turnsFor(int faultTypes)
{
    return faultTypes >= 100000 ? 7 : std::min(301, 300000 / faultTypes | 1);
}

}  // namespace

int main(int argc, char** argv)
{
    benchmark::Initialize(&argc, argv);
    const TempDir files;
    std::vector<benchmark::internal::Benchmark*> all;
    const auto add = [&all](const std::string& name, int turns, auto function) {
        all.push_back(benchmark::RegisterBenchmark(name.c_str(), function)->Iterations(turns));
    };
    std::set<std::string> made;
    const auto makeFile = [&](int faultTypes, bool indexed) {
        std::string file =
            files.file(std::to_string(faultTypes) + (indexed ? "-indexed.db" : ".db"));
        if (made.insert(file).second) {
            std::cerr << "making a database of " << faultTypes << " fault types\n";
            makeFaultDatabase(file, faultTypes, indexed);
        }
        return file;
    };
    for (const int faultTypes : {100, 1000, 10000, 100000}) {
        const std::string file = makeFile(faultTypes, false);
        for (const QuestionKind& question : QUESTIONS) {
            add(std::string("read/") + question.name + "/" + std::to_string(faultTypes),
                turnsFor(faultTypes), [&question, faultTypes, file](benchmark::State& state) {
                    read(state, question, faultTypes, file);
                });
        }
    }
    constexpr int BOUNDED = 2000;  // as for scripts/check-cost
    const std::string bounded = makeFile(BOUNDED, false);
    for (const QuestionKind& question : QUESTIONS) {
        add(std::string("bounded/") + question.name + "/" + std::to_string(BOUNDED), 301,
            [&](benchmark::State& state) { readWithBareTable(state, question, BOUNDED, bounded); });
    }
    constexpr int TYPICAL = 1000;
    const QuestionKind& texts = QUESTIONS[3];
    const std::string indexed = makeFile(TYPICAL, true);
    add("indexed/textsOfCode/1000", 1001,
        [&](benchmark::State& state) { read(state, texts, TYPICAL, indexed); });
    add("firstRead/textsOfCode/1000", 51,
        [&](benchmark::State& state) { firstRead(state, texts, TYPICAL, indexed); });
    add("openAndClose/1000", 301, [&](benchmark::State& state) { openAndClose(state, indexed); });
    add("statementText/insert", 301, statementText);
    for (const int faultTypes : {2000, 10000, 25000}) {
        const std::string file = makeFile(faultTypes, false);
        add("pageCache/textsOfCode/" + std::to_string(faultTypes), 31,
            [faultTypes, file](benchmark::State& state) { pageCache(state, faultTypes, file); });
    }
    Progress progress(all.size());
    benchmark::RunSpecifiedBenchmarks(&progress);
}
