#include "Trial.h"

#include <fcntl.h>
#include <sqlite3.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <exception>
#include <functional>
#include <iostream>
#include <new>
#include <sstream>
#include <stdexcept>
#include <vector>

#include "Stacks.h"
#include "support/QuickClock.h"
#include "support/records.h"
#include "zav/DescriptionDb.h"
#include "zav/Sqlite3Db.h"
#include "zav/ZavSqlDescriptionsTbl.h"
#include "zav/ZavSqlFaultTypeDefTbl.h"

namespace {

constexpr unsigned short LOOKED_UP = 17;

/// Longer than anything that keeps its promise: six calls of 12 s.
constexpr rlim_t MOST_SECONDS = 80;

/// More than any file may make the process take, and less than the machine has.
constexpr std::uint64_t MOST_MEMORY = 6ULL * 1024 * 1024 * 1024;

/// What a process leaves of the trial, however it ends.
class SharedOutcome {
public:
    SharedOutcome()
        : m_mapped(mmap(nullptr, sizeof(Outcome), PROT_READ | PROT_WRITE,
                        MAP_SHARED | MAP_ANONYMOUS, -1, 0))
    {
        if (m_mapped == MAP_FAILED) {
            throw std::bad_alloc();
        }
        new (m_mapped) Outcome();
    }
    ~SharedOutcome() { munmap(m_mapped, sizeof(Outcome)); }
    SharedOutcome(const SharedOutcome&) = delete;
    SharedOutcome& operator=(const SharedOutcome&) = delete;

    Outcome& operator*() const { return *static_cast<Outcome*>(m_mapped); }

private:
    void* m_mapped;
};

struct Answers {
    std::vector<FaultTypeDef> faultTypes;
    std::vector<FaultTypeDef> faultType = std::vector<FaultTypeDef>(1);
    std::vector<Descriptions> descriptions;
    std::vector<Descriptions> texts;
};

void add(std::uint64_t& checksum, const std::string& text)
{
    checksum = (checksum ^ std::hash<std::string>()(text)) * 1099511628211ULL;
}

template <class Record>
void add(std::uint64_t& checksum, const std::vector<Record>& records)
{
    for (const Record& record : records) {
        std::apply(
            [&checksum](const auto&... fields) {
                const auto text = [](const auto& field) {
                    std::ostringstream stream;
                    stream << field;
                    return stream.str();
                };
                (add(checksum, text(fields)), ...);
            },
            fieldsOf(record));
    }
}

std::uint64_t checksumOf(const Answers& answers)
{
    std::uint64_t checksum = 14695981039346656037ULL;
    add(checksum, answers.faultTypes);
    add(checksum, answers.faultType);
    add(checksum, answers.descriptions);
    add(checksum, answers.texts);
    return checksum;
}

void measure(Outcome& outcome, int (*call)(void*), void* argument)
{
    sqlite3_memory_highwater(1);
    const double before = processorSeconds();
    Call& measured = outcome.calls[static_cast<std::size_t>(outcome.count)];
    measured.result = call(argument);
    measured.seconds = processorSeconds() - before;
    measured.sqliteBytes = sqlite3_memory_highwater(0);
    ++outcome.count;
}

void open(Outcome& outcome, const std::string& file)
{
    measure(
        outcome,
        [](void* name) {
            return DescriptionDb::getInstance()->openDb(*static_cast<std::string*>(name), true);
        },
        const_cast<std::string*>(&file));
}

void askAndClose(Outcome& outcome, Answers& answers)
{
    static DescriptionDb& service = *DescriptionDb::getInstance();
    measure(
        outcome,
        [](void* list) {
            return service.getFaultTypeDefTbl(static_cast<Answers*>(list)->faultTypes);
        },
        &answers);
    measure(
        outcome,
        [](void* list) {
            return service.getFaultTypeDef(LOOKED_UP,
                                           static_cast<Answers*>(list)->faultType.front());
        },
        &answers);
    measure(
        outcome,
        [](void* list) {
            return service.getDescriptionsTbl(static_cast<Answers*>(list)->descriptions);
        },
        &answers);
    measure(
        outcome,
        [](void* list) {
            return service.getDescriptionsByFC(LOOKED_UP, static_cast<Answers*>(list)->texts);
        },
        &answers);
    measure(
        outcome, [](void*) { return service.closeDb(); }, nullptr);
}

std::size_t runOn(std::size_t stackSize, const std::function<void()>& run)
{
    return stackSize == 0 ? runOnMainStack(run) : runOnThread(stackSize, run);
}

void limit(decltype(RLIMIT_CPU) resource, rlim_t most)
{
    const struct rlimit value = {most, most};
    setrlimit(resource, &value);
}

[[noreturn]] void runInChild(const std::string& file, const Stack& stack, int clockSpeed,
                             Outcome& outcome)
{
    limit(RLIMIT_CPU, MOST_SECONDS);
    limit(RLIMIT_CORE, 0);
#if !defined(__SANITIZE_ADDRESS__)
    limit(RLIMIT_AS, static_cast<rlim_t>(std::min<std::uint64_t>(MOST_MEMORY, RLIM_INFINITY)));
#endif
    dup2(::open(linesOf(file).c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600), STDOUT_FILENO);
    DescriptionDb::getInstance()->setDbgLevel(0);
    Answers answers;
    const QuickClock clock(clockSpeed);
    const std::size_t ofOpening = runOn(stack.openingSize, [&] { open(outcome, file); });
    const std::size_t ofAsking = runOn(stack.querySize, [&] { askAndClose(outcome, answers); });
    outcome.stackBytes = std::max(ofOpening, ofAsking);
    outcome.checksum = checksumOf(answers);
    _exit(0);
}

}  // namespace

std::string linesOf(const std::string& file)
{
    return file + ".lines";
}

Outcome tryFile(const std::string& file, const Stack& stack, int clockSpeed)
{
    const SharedOutcome shared;
    std::cout.flush();
    const pid_t child = fork();
    if (child == 0) {
        runInChild(file, stack, clockSpeed, *shared);
    }
    int status = 0;
    struct rusage usage = {};
    if (child < 0 || wait4(child, &status, 0, &usage) != child) {
        throw std::runtime_error("no process for a trial");
    }
    Outcome outcome = *shared;
    outcome.signal = WIFSIGNALED(status) ? WTERMSIG(status) : WEXITSTATUS(status);
    outcome.residentBytes = usage.ru_maxrss * 1024LL;
    return outcome;
}

std::uint64_t checksumWithoutBounds(const std::string& file)
{
    Answers answers;
    Sqlite3Db db(0);
    ZavSqlFaultTypeDefTbl faultTypes("fault_type_definition");
    ZavSqlDescriptionsTbl descriptions("descriptions");
    const std::string lookedUp = std::to_string(LOOKED_UP);
    // A connection for writing is the application's own, and has none.
    if (db.openDb(file, false) != 0 ||
        db.getTbl("SELECT * FROM fault_type_definition", answers.faultTypes, &faultTypes) < 0 ||
        db.getTbl("SELECT * FROM fault_type_definition WHERE code LIKE " + lookedUp,
                  answers.faultType, &faultTypes) != 1 ||
        db.getTbl("SELECT * FROM descriptions", answers.descriptions, &descriptions) < 0 ||
        db.getTbl("SELECT * FROM descriptions WHERE id_fault_type = " + lookedUp, answers.texts,
                  &descriptions) < 0) {
        throw std::runtime_error("an honest file that SQLite does not read");
    }
    return checksumOf(answers);
}
