#include "support/ChildProcess.h"

#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <exception>
#include <system_error>

namespace {

[[noreturn]] void runAndExit(const std::function<void(const ChildProcess::Signal&)>& run,
                             int signals)
{
    try {
        run([signals] {
            if (write(signals, "", 1) != 1) {
                _exit(2);
            }
        });
    } catch (const std::exception& exception) {
        std::fprintf(stderr, "child process: %s\n", exception.what());
        _exit(1);
    }
    _exit(0);
}

}  // namespace

ChildProcess::ChildProcess(const std::function<void(const Signal& signal)>& run)
{
    int ends[2];
    if (pipe(ends) != 0) {
        throw std::system_error(errno, std::generic_category(), "pipe");
    }
    m_pid = fork();
    if (m_pid == 0) {
        close(ends[0]);
        runAndExit(run, ends[1]);
    }
    close(ends[1]);
    m_signals = ends[0];
    if (m_pid < 0) {
        close(m_signals);
        throw std::system_error(errno, std::generic_category(), "fork");
    }
}

ChildProcess::~ChildProcess()
{
    kill();
    close(m_signals);
}

bool ChildProcess::waitForSignal() const
{
    char byte = 0;
    return read(m_signals, &byte, 1) == 1;
}

void ChildProcess::kill()
{
    if (m_pid > 0) {
        ::kill(m_pid, SIGKILL);
        waitpid(m_pid, nullptr, 0);
        m_pid = -1;
    }
}
