// callCounter PROGRAM [ARGUMENT...]: prints how many system calls a program makes from its exec
// until it looks at what it has cost.

#include <sys/ptrace.h>
#include <sys/syscall.h>
#include <sys/user.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>

namespace {

long numberOfCall(pid_t process)
{
    user_regs registers = {};
    ptrace(PTRACE_GETREGS, process, nullptr, &registers);
    return static_cast<long>(registers.uregs[7]);
}

/// @return whether the process goes on to the beginning or the end of a call.
bool goOn(pid_t process)
{
    int status = 0;
    ptrace(PTRACE_SYSCALL, process, nullptr, nullptr);
    return waitpid(process, &status, 0) == process && WIFSTOPPED(status);
}

}  // namespace

int main(int /*argc*/, char** argv)
{
    const pid_t process = fork();
    if (process == 0) {
        ptrace(PTRACE_TRACEME, 0, nullptr, nullptr);
        execvp(argv[1], argv + 1);
        _exit(1);
    }
    int status = 0;
    waitpid(process, &status, 0);  // the end of its exec
    long calls = 0;
    while (goOn(process) && numberOfCall(process) != SYS_getrusage && goOn(process)) {
        ++calls;
    }
    ptrace(PTRACE_KILL, process, nullptr, nullptr);
    std::printf("calls %ld\n", calls);
    return 0;
}
