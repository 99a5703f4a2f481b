#include "platform/posix/PosixShell.h"
#include "posix_support.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <fcntl.h>
#include <poll.h>

namespace tarnwick::test {
namespace {

// A program named xdg-open replaces the desktop's: it writes what it was started with into a pipe.
class PosixShellTest : public testing::Test {
protected:
    PosixShellTest() {
        mkfifo((home_ / "started").c_str(), 0600);
        started_ = open((home_ / "started").c_str(), O_RDWR | O_CLOEXEC);
        WriteFile(home_ / "bin/xdg-open", "#!/bin/sh\nprintf '%s\\n' \"$#\" \"$@\" \"$PWD\" \"$(ls /proc/self/fd | tr "
                                          "'\\n' ' ')\" \"$(readlink /proc/self/fd/2)\" . > '" +
                                              (home_ / "started") + "'\n");
        chmod((home_ / "bin/xdg-open").c_str(), 0755);
        TemporaryHome::Set("PATH", (home_ / "bin") + ":" + path_);
    }
    ~PosixShellTest() override {
        TemporaryHome::Set("PATH", path_);
        close(started_);
    }

    // What the next started program has to say.
    std::string Started() const {
        std::string text;
        pollfd watched = {started_, POLLIN, 0};
        char buffer[1000];
        while (!text.ends_with("\n.\n") && poll(&watched, 1, 10000) == 1) {
            const ssize_t got = read(started_, buffer, sizeof buffer);
            text.append(buffer, static_cast<std::size_t>(got));
        }
        return text;
    }

    TemporaryHome home_;
    const std::string path_ = std::getenv("PATH");
    int started_ = -1;
};

TEST_F(PosixShellTest, UrlIsOneArgumentAndNothingIsInherited) {
    const int open = ::open("/dev/null", O_RDONLY); // without close-on-exec
    const std::string folder = std::filesystem::read_symlink("/proc/self/exe").parent_path();
    const auto before = std::filesystem::current_path();
    std::filesystem::current_path(home_.Path());
    for (const char* url : {"http://a/?x=1&y=$(touch gone);z='#`id`", "mailto:x@a"}) {
        PosixShell().OpenUrl(0, url);
        // Standard input, output and error, and the one that ls lists with.
        EXPECT_EQ(Started(), "1\n" + std::string(url) + "\n" + folder + "\n0 1 2 3 \n/dev/null\n.\n");
        EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1) << "a child is left to wait for";
    }
    std::filesystem::current_path(before);
    close(open);
}

} // namespace
} // namespace tarnwick::test
