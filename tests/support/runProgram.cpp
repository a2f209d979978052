#include "support/runProgram.h"

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

namespace {

void check(int error, const std::string& what)
{
    if (error != 0) {
        throw std::system_error(error, std::generic_category(), what);
    }
}

pid_t start(std::vector<std::string>& command, const int (&outputPipe)[2])
{
    std::vector<char*> arguments;
    for (std::string& word : command) {
        arguments.push_back(word.data());
    }
    arguments.push_back(nullptr);

    posix_spawn_file_actions_t actions;
    check(posix_spawn_file_actions_init(&actions), "posix_spawn_file_actions_init");
    posix_spawn_file_actions_adddup2(&actions, outputPipe[1], STDOUT_FILENO);
    posix_spawn_file_actions_addclose(&actions, outputPipe[0]);
    posix_spawn_file_actions_addclose(&actions, outputPipe[1]);
    pid_t child = -1;
    const int error =
        posix_spawnp(&child, arguments[0], &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    check(error, "starting " + command.front());
    return child;
}

std::string readAll(int descriptor)
{
    std::string text;
    char chunk[4096];
    for (ssize_t count = 0; (count = read(descriptor, chunk, sizeof chunk)) > 0;) {
        text.append(chunk, static_cast<std::size_t>(count));
    }
    return text;
}

}  // namespace

std::vector<std::string> emulator()
{
    return {ZAV_TEST_EMULATOR};
}

ProgramResult runProgram(std::vector<std::string> command)
{
    const std::vector<std::string> prefix = emulator();
    command.insert(command.begin(), prefix.begin(), prefix.end());

    int outputPipe[2];
    check(pipe(outputPipe) == 0 ? 0 : errno, "pipe");
    const pid_t child = start(command, outputPipe);
    close(outputPipe[1]);
    ProgramResult result{-1, readAll(outputPipe[0])};
    close(outputPipe[0]);

    int status = 0;
    check(waitpid(child, &status, 0) == child ? 0 : errno, "waitpid");
    if (WIFEXITED(status)) {
        result.exitStatus = WEXITSTATUS(status);
    }
    return result;
}
