// A reader under updates: updates NUMBER has that many of them made by zav install while it keeps
// asking, as examples/follow-updates shows. Ends with 1 if an answer is neither the old file's nor
// the new one's, if an update goes unnoticed, or if descriptors or memory have grown. To be run
// with GLIBC_TUNABLES=glibc.malloc.tcache_count=0: what the allocator keeps for its threads counts
// as in use.

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <iostream>
#include <string>
#include <vector>

#include "FollowedFile.h"
#include "support/TempDir.h"
#include "support/Usage.h"
#include "support/database.h"

namespace {

constexpr std::size_t TEXTS = 200;

void check(bool holds, const std::string& what)
{
    if (!holds) {
        std::cerr << "unexpected: " << what << "\n";
        std::exit(1);
    }
}

/// One of the two files that are installed in turn: all of its texts say which it is.
std::string makeGeneration(const std::string& file, const std::string& word)
{
    return makeDatabase(
        file,
        "INSERT INTO fault_type_definition VALUES(1,'E1','error',0,0);"
        "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < " +
            std::to_string(TEXTS) + ") INSERT INTO descriptions SELECT i, 1, i, '" + word +
            "', '', '" + word + "', '', '' FROM n");
}

/// An update that is under way.
class Update {
public:
    Update(const std::string& from, const std::string& to)
    {
        std::string words[] = {ZAV_COMMAND, "install", from, to};
        char* arguments[] = {words[0].data(), words[1].data(), words[2].data(), words[3].data(),
                             nullptr};
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
        check(posix_spawn(&m_process, arguments[0], &actions, nullptr, arguments, environ) == 0,
              "zav install cannot be started");
        posix_spawn_file_actions_destroy(&actions);
    }

    bool isUnderWay() const
    {
        int status = 0;
        if (waitpid(m_process, &status, WNOHANG) == 0) {
            return true;
        }
        check(WIFEXITED(status) && WEXITSTATUS(status) == 0, "zav install fails");
        return false;
    }

private:
    pid_t m_process = -1;
};

class Reader {
public:
    explicit Reader(const std::string& file) : m_file(file) {}

    /// @return the word of the file that answers.
    std::string ask()
    {
        m_file.follow();
        std::vector<Descriptions> texts;
        check(m_db.getDescriptionsTbl(texts) == static_cast<int>(TEXTS), "a failed query");
        for (const Descriptions& text : texts) {
            check(text.name == texts.front().name && text.description == texts.front().name,
                  "an answer that is half old, half new");
        }
        ++m_answers;
        return texts.front().name;
    }

    long answers() const { return m_answers; }

private:
    FollowedFile m_file;
    DescriptionDb& m_db = *DescriptionDb::getInstance();
    long m_answers = 0;
};

class Updates {
public:
    void run(long count)
    {
        for (long i = 0; i < count; ++i) {
            const int next = 1 - m_current;
            Update update(m_files[next], m_target);
            while (update.isUnderWay()) {
                const std::string word = m_reader.ask();
                check(word == m_words[m_current] || word == m_words[next], "an unknown answer");
            }
            check(m_reader.ask() == m_words[next], "an update that goes unnoticed");
            m_current = next;
        }
    }

    long answers() const { return m_reader.answers(); }

private:
    const std::string m_words[2] = {"one", "two"};

    TempDir m_dir;
    const std::string m_files[2] = {makeGeneration(m_dir.file("one.db"), m_words[0]),
                                    makeGeneration(m_dir.file("two.db"), m_words[1])};
    const std::string m_target = makeGeneration(m_dir.file("faults.db"), m_words[0]);
    int m_current = 0;
    Reader m_reader{m_target};
};

}  // namespace

int main(int argc, char** argv)
{
    const long count = argc == 2 ? std::strtol(argv[1], nullptr, 10) : 0;
    if (count <= 0) {
        std::cerr << "usage: updates NUMBER\n";
        return 2;
    }
    DescriptionDb::getInstance()->setDbgLevel(0);

    Updates updates;
    updates.run(10);  // what is made once and kept
    const Usage before = usage();
    print("before", before);
    const auto start = std::chrono::steady_clock::now();
    updates.run(count);
    const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - start;
    const Usage after = usage();
    print("after", after);
    std::cerr << count << " updates and " << updates.answers() << " answers in " << seconds.count()
              << " s\n";

    check(after.descriptors == before.descriptors, "descriptors have grown");
    check(after.sqliteBytes == before.sqliteBytes, "SQLite's memory has grown");
    check(after.heapBytes < before.heapBytes + 1024,
          "the heap has grown");  // paths differ in length
    return 0;
}
