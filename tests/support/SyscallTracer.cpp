#include "support/SyscallTracer.h"

#include <fcntl.h>
#include <sys/ptrace.h>
#include <sys/syscall.h>
#include <sys/uio.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <system_error>

#include "support/runProgram.h"

namespace {
namespace fs = std::filesystem;

constexpr int SYSCALL_STOP = SIGTRAP | 0x80;

/// A system call that is about to be made.
struct Call {
    pid_t process;
    const std::uint64_t (&arguments)[6];
};

std::string nameOf(const fs::path& path)
{
    return path.filename().string();
}

std::string textAt(const Call& call, std::size_t argument)
{
    char text[4096] = {};
    const iovec local = {text, sizeof text - 1};
    // The address is one of the other process.
    // NOLINTNEXTLINE(performance-no-int-to-ptr)
    iovec remote = {reinterpret_cast<void*>(call.arguments[argument]), sizeof text - 1};
    // As much as is there: the text may stand at the end of the memory.
    while (remote.iov_len > 0 && process_vm_readv(call.process, &local, 1, &remote, 1, 0) < 0) {
        remote.iov_len /= 2;
    }
    return nameOf(text);
}

std::string descriptorAt(const Call& call, std::size_t argument)
{
    std::error_code error;
    return nameOf(fs::read_symlink(
        "/proc/" + std::to_string(call.process) + "/fd/" + std::to_string(call.arguments[argument]),
        error));
}

using Description = std::optional<std::string>;
using Describe = std::function<Description(const Call&)>;

Describe onDescriptor(const std::string& name)
{
    return [name](const Call& call) { return name + " " + descriptorAt(call, 0); };
}

Describe onPath(const std::string& name, std::size_t argument)
{
    return [name, argument](const Call& call) { return name + " " + textAt(call, argument); };
}

Describe renaming(std::size_t from, std::size_t to)
{
    return [from, to](const Call& call) {
        return "rename " + textAt(call, from) + " " + textAt(call, to);
    };
}

Describe opening(std::size_t path, std::size_t flags)
{
    return [path, flags](const Call& call) -> Description {
        if ((call.arguments[flags] & O_CREAT) == 0) {
            return std::nullopt;
        }
        return "create " + textAt(call, path);
    };
}

const std::map<long, Describe>& changingCalls()
{
    static const std::map<long, Describe> calls = {
#ifdef SYS_open
        {SYS_open, opening(0, 1)},
        {SYS_creat, onPath("create", 0)},
        {SYS_rename, renaming(0, 1)},
        {SYS_unlink, onPath("unlink", 0)},
        {SYS_chmod, onPath("chmod", 0)},
        {SYS_chown, onPath("chown", 0)},
        {SYS_link, onPath("link", 1)},
#endif
#ifdef SYS_ftruncate64
        {SYS_ftruncate64, onDescriptor("ftruncate")},
        {SYS_truncate64, onPath("truncate", 0)},
#endif
#ifdef SYS_renameat
        {SYS_renameat, renaming(1, 3)},
#endif
        {SYS_openat, opening(1, 2)},
        {SYS_renameat2, renaming(1, 3)},
        {SYS_unlinkat, onPath("unlink", 1)},
        {SYS_linkat, onPath("link", 3)},
        {SYS_fchmodat, onPath("chmod", 1)},
        {SYS_fchownat, onPath("chown", 1)},
        {SYS_fchmod, onDescriptor("fchmod")},
        {SYS_fchown, onDescriptor("fchown")},
        {SYS_truncate, onPath("truncate", 0)},
        {SYS_ftruncate, onDescriptor("ftruncate")},
        {SYS_fallocate, onDescriptor("fallocate")},
        {SYS_write, onDescriptor("write")},
        {SYS_writev, onDescriptor("write")},
        {SYS_pwrite64, onDescriptor("write")},
        {SYS_pwritev, onDescriptor("write")},
        {SYS_sendfile, onDescriptor("write")},
        {SYS_fsync, onDescriptor("fsync")},
        {SYS_fdatasync, onDescriptor("fsync")},
    };
    return calls;
}

[[noreturn]] void fail(const char* what)
{
    throw std::system_error(errno, std::generic_category(), what);
}

[[noreturn]] void becomeTraced(const std::vector<std::string>& command)
{
    std::vector<char*> arguments;
    for (const std::string& word : command) {
        arguments.push_back(const_cast<char*>(word.c_str()));
    }
    arguments.push_back(nullptr);
    const int nowhere = open("/dev/null", O_WRONLY);
    dup2(nowhere, STDOUT_FILENO);
    dup2(nowhere, STDERR_FILENO);
    setenv("ASAN_OPTIONS", "detect_leaks=0", 1);  // it would trace, too
    ptrace(PTRACE_TRACEME, 0, nullptr, nullptr);
    raise(SIGSTOP);
    execv(arguments.front(), arguments.data());
    _exit(127);
}

Description aboutToChange(pid_t process)
{
    __ptrace_syscall_info info = {};
    if (ptrace(PTRACE_GET_SYSCALL_INFO, process, sizeof info, &info) < 0) {
        fail("ptrace");
    }
    if (info.op != PTRACE_SYSCALL_INFO_ENTRY) {
        return std::nullopt;
    }
    const auto call = changingCalls().find(static_cast<long>(info.entry.nr));
    return call == changingCalls().end() ? std::nullopt : call->second({process, info.entry.args});
}

}  // namespace

bool canTraceSyscalls()
{
    return emulator().empty();
}

TracedRun runTraced(const std::vector<std::string>& command, std::size_t killBefore)
{
    const pid_t process = fork();
    if (process < 0) {
        fail("fork");
    }
    if (process == 0) {
        becomeTraced(command);
    }
    int status = 0;
    if (waitpid(process, &status, 0) != process ||
        ptrace(PTRACE_SETOPTIONS, process, nullptr, PTRACE_O_TRACESYSGOOD | PTRACE_O_EXITKILL) !=
            0) {
        fail("ptrace");
    }
    TracedRun run = {-1, {}};
    for (long signal = 0; ptrace(PTRACE_SYSCALL, process, nullptr, signal) == 0;) {
        if (waitpid(process, &status, 0) != process || !WIFSTOPPED(status)) {
            break;
        }
        signal =
            WSTOPSIG(status) == SYSCALL_STOP || WSTOPSIG(status) == SIGTRAP ? 0 : WSTOPSIG(status);
        if (WSTOPSIG(status) != SYSCALL_STOP) {
            continue;
        }
        if (const Description change = aboutToChange(process)) {
            if (run.calls.size() == killBefore) {
                kill(process, SIGKILL);
                waitpid(process, &status, 0);
                break;
            }
            run.calls.push_back(*change);
        }
    }
    run.exitStatus = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return run;
}
