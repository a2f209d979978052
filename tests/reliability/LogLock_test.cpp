#include <gtest/gtest.h>

#include <set>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "support/CoutCapture.h"
#include "support/FreshService.h"
#include "zav/sqlTblUtil.h"

namespace {

constexpr int ACCESS_LAYER_THREADS = 9;
constexpr int LINES = 200;

// The service is one thread's at a time, so that one thread writes its lines, nine the others'. In
// the thread sanitizer's build a line that is written without the lock is a race on the buffer.
TEST(LogLock, LinesOfBothLayersFromTenThreadsAreWhole)
{
    const FreshService service;
    const CoutCapture output;
    std::vector<std::thread> threads;
    threads.emplace_back([&service] {
        for (int line = 0; line < LINES; ++line) {
            service->openDb("/missing/faults.db", true);
        }
    });
    for (int i = 0; i < ACCESS_LAYER_THREADS; ++i) {
        threads.emplace_back([] {
            for (int line = 0; line < LINES; ++line) {
                sqlTblUtil::printError("message");
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }

    std::multiset<std::string> lines;
    std::istringstream written(output.text());
    for (std::string line; std::getline(written, line);) {
        lines.insert(line);
    }
    EXPECT_EQ(lines.size(), std::size_t{LINES} * (ACCESS_LAYER_THREADS + 1));
    EXPECT_EQ(lines.count("[ERROR] SQL3::printError() message"),
              std::size_t{LINES} * ACCESS_LAYER_THREADS);
    EXPECT_EQ(lines.count("[ERROR] ZAV::openDb() FAiled to open=/missing/faults.db"),
              std::size_t{LINES});
}

}  // namespace
