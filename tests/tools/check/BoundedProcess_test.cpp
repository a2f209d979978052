#include "check/file/BoundedProcess.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <csignal>
#include <stdexcept>
#include <system_error>

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

TEST(BoundedProcess, SaysWhenThereCanBeNone)
{
    rlimit before = {};
    getrlimit(RLIMIT_NOFILE, &before);
    const rlimit none = {3, before.rlim_max};
    setrlimit(RLIMIT_NOFILE, &none);
    EXPECT_THROW(runBounded([](const Writer&) {}, seconds(1), [] {}), std::system_error);
    setrlimit(RLIMIT_NOFILE, &before);
}

}  // namespace
