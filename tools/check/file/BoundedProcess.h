#pragma once

#include <sys/types.h>

#include <chrono>
#include <cstdint>
#include <functional>
#include <string>

/// How a process has ended, and what it has written.
struct ProcessResult {
    enum class End { DONE, OUT_OF_TIME, CRASHED };

    End end;
    std::string output;
};

using Writer = std::function<void(const std::string&)>;

/// Work in a process of its own, a copy of this one, which ends with the work. Whatever the work
/// meets, this process goes on: it is what a file made to do harm can neither crash nor keep busy.
class BoundedProcess {
public:
    /// Begins.
    ///
    /// @param work  writes its result. No database may be open: SQLite's locks do not pass to a
    ///              copy.
    /// @param most  of the processor's time.
    /// @throws std::system_error if there can be no further process.
    BoundedProcess(const std::function<void(const Writer&)>& work, std::chrono::seconds most);

    /// Ends the work if nobody has waited for it.
    ~BoundedProcess();
    BoundedProcess(const BoundedProcess&) = delete;
    BoundedProcess& operator=(const BoundedProcess&) = delete;

    /// To be called once.
    ///
    /// @param onWait  called ten times a second meanwhile.
    ProcessResult wait(const std::function<void()>& onWait);

private:
    int m_output = -1;
    pid_t m_process = -1;  ///< nothing to wait for: -1
};

/// Begins the work, and waits for it.
ProcessResult runBounded(const std::function<void(const Writer&)>& work, std::chrono::seconds most,
                         const std::function<void()>& onWait);

/// @return ten times what a slow device takes to read a file of so many bytes.
std::chrono::seconds mostTimeFor(std::uintmax_t fileSize);
