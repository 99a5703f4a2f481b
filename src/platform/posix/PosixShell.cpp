#include "platform/posix/PosixShell.h"

#include "platform/posix/Utf8.h"

#include <algorithm>
#include <array>
#include <csignal>
#include <fcntl.h>
#include <string_view>
#include <sys/types.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tarnwick {

namespace {

constexpr char Program[] = "xdg-open";

bool IsLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }
bool IsSchemeCharacter(char c) { return IsLetter(c) || (c >= '0' && c <= '9') || c == '+' || c == '-' || c == '.'; }
bool IsControl(char c) { return static_cast<unsigned char>(c) < 0x20 || c == '\x7F'; }

// A scheme (RFC 3986, 3.1) of two characters or more (one is a drive), ":", and something behind it.
bool IsUrl(std::string_view text) {
    constexpr std::array<std::string_view, 2> LocalSchemes = {"file", "admin"};
    const std::size_t colon = text.find(':');
    if (colon == std::string_view::npos || colon < 2 || colon + 1 == text.size())
        return false;
    const std::string_view scheme = text.substr(0, colon);
    return IsLetter(scheme.front()) && std::ranges::all_of(scheme, IsSchemeCharacter) &&
           std::ranges::none_of(text, IsControl) &&
           std::ranges::none_of(LocalSchemes,
                                [scheme](std::string_view local) { return EqualRegardlessOfCase(scheme, local); });
}

// Runs in the new process: nothing of this one goes along.
[[noreturn]] void Execute(char* const* arguments) {
    const int nowhere = open("/dev/null", O_RDWR);
    for (int standard = STDIN_FILENO; standard <= STDERR_FILENO; ++standard)
        dup2(nowhere, standard);
    close_range(STDERR_FILENO + 1, ~0U, 0);
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
    execvp(arguments[0], arguments);
    _exit(127);
}

} // namespace

void PosixShell::OpenUrl(WindowHandle /*owner*/, const std::string& url) {
    if (!IsUrl(url))
        return;
    std::string program = Program;
    std::string text = url;
    const std::array<char*, 3> arguments = {program.data(), text.data(), nullptr};
    // The child leaves at once, so that the program belongs to no one here and nobody has to wait for its end.
    const pid_t child = fork();
    if (child == 0) {
        setsid();
        if (fork() == 0)
            Execute(arguments.data());
        _exit(0);
    }
    if (child > 0)
        waitpid(child, nullptr, 0);
}

} // namespace tarnwick
