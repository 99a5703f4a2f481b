#include "platform/posix/PosixShell.h"

#include <array>
#include <csignal>
#include <fcntl.h>
#include <filesystem>
#include <string>
#include <sys/types.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tarnwick {

namespace {

constexpr char Program[] = "xdg-open";

std::string ProgramFolder() {
    std::error_code unknown;
    return std::filesystem::read_symlink("/proc/self/exe", unknown).parent_path();
}

// Runs in the new process: it takes nothing of this one along.
[[noreturn]] void Execute(char* const* arguments, const char* folder) {
    const int nowhere = open("/dev/null", O_RDWR);
    for (int standard = STDIN_FILENO; standard <= STDERR_FILENO; ++standard)
        dup2(nowhere, standard);
    close_range(STDERR_FILENO + 1, ~0U, 0);
    if (chdir(folder) != 0 && chdir("/") != 0)
        _exit(127);
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
    execvp(arguments[0], arguments);
    _exit(127);
}

} // namespace

void PosixShell::OpenUrl(WindowHandle /*owner*/, const std::string& url) {
    std::string program = Program;
    std::string text = url;
    const std::string folder = ProgramFolder();
    const std::array<char*, 3> arguments = {program.data(), text.data(), nullptr};
    // The child leaves at once, so that the program belongs to no one here and nobody has to wait for its end.
    const pid_t child = fork();
    if (child == 0) {
        setsid();
        if (fork() == 0)
            Execute(arguments.data(), folder.c_str());
        _exit(0);
    }
    if (child > 0)
        waitpid(child, nullptr, 0);
}

} // namespace tarnwick
