#include "BoundedProcess.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <system_error>
#include <utility>

namespace {

/// @return the result of a system call.
/// @throws std::system_error where that is a failure.
template <class Result>
Result throwIfFailed(Result result, const char* what)
{
    if (result < 0) {
        throw std::system_error(errno, std::generic_category(), what);
    }
    return result;
}

void limit(std::chrono::seconds most)
{
    const auto seconds = static_cast<rlim_t>(most.count());
    const rlimit time = {seconds, seconds + 1};
    const rlimit noCore = {0, 0};
    setrlimit(RLIMIT_CPU, &time);
    setrlimit(RLIMIT_CORE, &noCore);
}

void writeAll(int descriptor, const std::string& text)
{
    std::size_t done = 0;
    while (done < text.size()) {
        const ssize_t count =
            TEMP_FAILURE_RETRY(write(descriptor, text.data() + done, text.size() - done));
        done += static_cast<std::size_t>(throwIfFailed(count, "write"));
    }
}

[[noreturn]] void runCopy(const std::function<void(const Writer&)>& work, int descriptor)
{
    int status = EXIT_SUCCESS;
    try {
        work([descriptor](const std::string& text) { writeAll(descriptor, text); });
    } catch (const std::exception&) {
        status = EXIT_FAILURE;
    }
    std::exit(status);
}

/// Reads until the other end is closed.
std::string readAll(int descriptor, const std::function<void()>& onWait)
{
    constexpr int WAIT_MS = 100;
    std::string text;
    std::array<char, 4096> buffer = {};
    for (ssize_t count = 1; count != 0;) {
        pollfd waiting = {descriptor, POLLIN, 0};
        onWait();
        if (poll(&waiting, 1, WAIT_MS) <= 0) {
            continue;
        }
        count = throwIfFailed(TEMP_FAILURE_RETRY(read(descriptor, buffer.data(), buffer.size())),
                              "read");
        text.append(buffer.data(), static_cast<std::size_t>(count));
    }
    return text;
}

ProcessResult::End endOf(pid_t process)
{
    int status = 0;
    throwIfFailed(TEMP_FAILURE_RETRY(waitpid(process, &status, 0)), "waitpid");
    if (WIFEXITED(status) && WEXITSTATUS(status) == EXIT_SUCCESS) {
        return ProcessResult::End::DONE;
    }
    const bool isLimit =
        WIFSIGNALED(status) && (WTERMSIG(status) == SIGXCPU || WTERMSIG(status) == SIGKILL);
    return isLimit ? ProcessResult::End::OUT_OF_TIME : ProcessResult::End::CRASHED;
}

}  // namespace

BoundedProcess::BoundedProcess(const std::function<void(const Writer&)>& work,
                               std::chrono::seconds most)
{
    std::array<int, 2> ends = {};
    throwIfFailed(pipe2(ends.data(), O_CLOEXEC), "pipe");
    std::fflush(nullptr);  // or the copy would write what waits here a second time
    m_process = throwIfFailed(fork(), "fork");
    if (m_process == 0) {
        close(ends[0]);
        prctl(PR_SET_PDEATHSIG, SIGKILL);  // nobody is left to read what it writes
        limit(most);
        runCopy(work, ends[1]);
    }
    close(ends[1]);
    m_output = ends[0];
}

BoundedProcess::~BoundedProcess()
{
    close(m_output);
    if (m_process > 0) {
        kill(m_process, SIGKILL);
        TEMP_FAILURE_RETRY(waitpid(m_process, nullptr, 0));
    }
}

ProcessResult BoundedProcess::wait(const std::function<void()>& onWait)
{
    ProcessResult result = {ProcessResult::End::DONE, readAll(m_output, onWait)};
    result.end = endOf(std::exchange(m_process, -1));
    return result;
}

ProcessResult runBounded(const std::function<void(const Writer&)>& work, std::chrono::seconds most,
                         const std::function<void()>& onWait)
{
    return BoundedProcess(work, most).wait(onWait);
}

std::chrono::seconds mostTimeFor(std::uintmax_t fileSize)
{
    constexpr std::uintmax_t BYTES_PER_SECOND = 1024UL * 1024;
    return std::chrono::seconds(10 + fileSize / BYTES_PER_SECOND);
}
