#include "check/file/BoundedProcess.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <stdexcept>
#include <system_error>

#include "support/ChildProcess.h"

namespace {

using std::chrono::seconds;
using End = ProcessResult::End;

TEST(BoundedProcess, HandsOverWhatTheWorkWrites)
{
    const std::string large(1000000, 'x');  // more than a pipe holds
    const ProcessResult result = runBounded(
        [&](const Writer& write) {
            write("a");
            write(large);
        },
        seconds(100), [] {});
    EXPECT_EQ(result.end, End::DONE);
    EXPECT_EQ(result.output, "a" + large);
}

TEST(BoundedProcess, EndsWorkThatDoesNot)
{
    int waits = 0;
    const ProcessResult result = runBounded(
        [](const Writer& write) {
            write("begun");
            for (volatile bool goesOn = true; goesOn;) {
            }
        },
        seconds(1), [&] { ++waits; });
    EXPECT_EQ(result.end, End::OUT_OF_TIME);
    EXPECT_EQ(result.output, "begun");
    EXPECT_GT(waits, 3);
}

TEST(BoundedProcess, EndsWorkThatNobodyWaitsFor)
{
    std::array<int, 2> ends = {};
    ASSERT_EQ(pipe2(ends.data(), O_NONBLOCK), 0);
    {
        const BoundedProcess unwanted([](const Writer&) { pause(); }, seconds(100));
        close(ends[1]);
    }
    char none = 0;
    EXPECT_EQ(read(ends[0], &none, 1), 0);  // nobody is left who holds the other end
    close(ends[0]);
}

TEST(BoundedProcess, OutlivesItsWork)
{
    const ProcessResult crashed =
        runBounded([](const Writer&) { std::signal(SIGSEGV, SIG_DFL), std::raise(SIGSEGV); },
                   seconds(100), [] {});
    EXPECT_EQ(crashed.end, End::CRASHED);
    const ProcessResult thrown =
        runBounded([](const Writer&) { throw std::runtime_error("nothing"); }, seconds(100), [] {});
    EXPECT_EQ(thrown.end, End::CRASHED);
}

// In a process of its own, since root, whom this limit does not bind, has to become somebody else.
TEST(BoundedProcess, SaysWhenThereCanBeNone)
{
    const ChildProcess limited([](const ChildProcess::Signal& signal) {
        constexpr uid_t NOBODY = 65534;
        const rlimit none = {};
        if ((geteuid() == 0 && setuid(NOBODY) != 0) || setrlimit(RLIMIT_NPROC, &none) != 0) {
            return;
        }
        try {
            runBounded([](const Writer&) {}, seconds(100), [] {});
        } catch (const std::system_error&) {
            signal();
        }
    });
    EXPECT_TRUE(limited.waitForSignal());
}

}  // namespace
