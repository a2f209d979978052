#include "zav/LogUtil.h"

#include <gtest/gtest.h>

#include <mutex>
#include <set>
#include <sstream>
#include <streambuf>
#include <string>
#include <system_error>
#include <thread>
#include <vector>

#include "support/CoutCapture.h"
#include "support/CoutRedirect.h"
#include "support/FailingLogMutex.h"
#include "support/LockProbe.h"
#include "zav/sqlTblUtil.h"

namespace {

/// Lets other threads in after each piece that is written, so that a line that is not protected is
/// torn.
class SlowBuffer : public std::streambuf {
public:
    std::string text() const { return m_text; }

protected:
    std::streamsize xsputn(const char* piece, std::streamsize length) override
    {
        {
            const std::lock_guard<std::mutex> lock(m_mutex);
            m_text.append(piece, static_cast<std::size_t>(length));
        }
        std::this_thread::yield();
        return length;
    }

    int_type overflow(int_type character) override
    {
        const char piece = traits_type::to_char_type(character);
        xsputn(&piece, 1);
        return character;
    }

private:
    std::mutex m_mutex;
    std::string m_text;
};

/// @return the lines with their line ends, in no order.
std::multiset<std::string> linesOf(const std::string& text)
{
    std::multiset<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        lines.insert(stream.eof() ? line : line + "\n");
    }
    return lines;
}

TEST(LogUtil, LinesOfTenThreadsAreNotTorn)
{
    constexpr int THREADS = 10;
    constexpr int LINES = 100;
    SlowBuffer buffer;
    {
        const CoutRedirect redirect(buffer);
        std::vector<std::thread> threads;
        threads.reserve(THREADS);
        for (int i = 0; i < THREADS; ++i) {
            threads.emplace_back([i] {
                for (int line = 0; line < LINES; ++line) {
                    sqlTblUtil::printError("error of thread " + std::to_string(i));
                    sqlTblUtil::printWarning("warning of thread " + std::to_string(i));
                }
            });
        }
        for (std::thread& thread : threads) {
            thread.join();
        }
    }

    std::multiset<std::string> expected;
    for (int i = 0; i < THREADS; ++i) {
        for (int line = 0; line < LINES; ++line) {
            const std::string end = " of thread " + std::to_string(i) + "\n";
            expected.insert("[ERROR] SQL3::printError() error" + end);
            expected.insert("[WARNING] SQL3::printWarning() warning" + end);
        }
    }
    EXPECT_EQ(linesOf(buffer.text()), expected);
}

TEST(LogUtil, LockIsHeldFromThePrefixToTheFlush)
{
    LockProbe probe;
    {
        const CoutRedirect redirect(probe);
        sqlTblUtil::printError("message");
    }
    EXPECT_GT(probe.withLock(), 0);
    EXPECT_EQ(probe.withoutLock(), 0);
    EXPECT_EQ(probe.flushes(), 1);
    EXPECT_EQ(probe.flushedText(), "[ERROR] SQL3::printError() message\n");
}

TEST(LogUtil, LockIsFreeAfterALine)
{
    const CoutCapture capture;
    sqlTblUtil::printWarning("message");
    const std::unique_lock<std::mutex> lock(LogUtil::logMutex, std::try_to_lock);
    EXPECT_TRUE(lock.owns_lock());
}

TEST(LogUtil, LockThatFailsRaisesASystemErrorAndWritesNothing)
{
    const CoutCapture capture;
    {
        const FailingLogMutex failing;
        EXPECT_THROW(sqlTblUtil::printError("message"), std::system_error);
        EXPECT_THROW(sqlTblUtil::printWarning("message"), std::system_error);
    }
    EXPECT_EQ(capture.text(), "");
    sqlTblUtil::printWarning("again");
    EXPECT_EQ(capture.text(), "[WARNING] SQL3::printWarning() again\n");
}

}  // namespace
