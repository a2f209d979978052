#pragma once

#include <sys/types.h>

#include <functional>

/// A process of its own that runs a function; killed, without a chance to tidy up, when the object
/// goes.
class ChildProcess {
public:
    /// What the function calls once it has come to where the parent waits for it.
    using Signal = std::function<void()>;

    /// @param run  runs in the child, which ends when it returns. Starts with no thread but its
    /// own.
    explicit ChildProcess(const std::function<void(const Signal& signal)>& run);
    ~ChildProcess();
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    /// @return whether the child has signalled; false if it has ended without.
    bool waitForSignal() const;

    /// Ends the child by SIGKILL, as a power cut would.
    void kill();

private:
    pid_t m_pid = -1;
    int m_signals = -1;
};
