#include "platform/posix/PosixShell.h"
#include "posix_support.h"

#include <gtest/gtest.h>

#include <fcntl.h>

namespace tarnwick::test {

TEST(PosixShellTest, AUrlIsOneArgumentAndNothingIsInherited) {
    const TemporaryHome home;
    const std::string opener = home / "bin/xdg-open", started = home / "started";
    // A program of this name replaces the desktop's: it writes down what it was started with.
    WriteFile(opener, "#!/bin/sh\nprintf '%s\\n' \"$#\" \"$@\" \"$PWD\" \"$(ls /proc/self/fd | tr '\\n' ' ')\" "
                      "\"$(readlink /proc/self/fd/2)\" \"$(cut -d ' ' -f 6 /proc/$$/stat)\" . > '" +
                          started + "'\n");
    chmod(opener.c_str(), 0755);
    setenv("PATH", (home / "bin:" + std::getenv("PATH")).c_str(), 1);
    const int inherited = open("/dev/null", O_RDONLY); // without close-on-exec
    std::filesystem::current_path("/");
    const std::string folder = std::filesystem::read_symlink("/proc/self/exe").parent_path();
    for (const std::string url : {"http://a/?x=1&y=$(touch gone);z='#`id`", "mailto:x@a"}) {
        std::filesystem::remove(started);
        PosixShell().OpenUrl(0, url);
        for (int wait = 0; wait < 1000 && !FileBytes(started).ends_with("\n.\n"); ++wait)
            usleep(10000);
        // Standard input, output and error, and the one that ls lists with.
        const std::string inheritance = "1\n" + url + "\n" + folder + "\n0 1 2 3 \n/dev/null\n";
        EXPECT_TRUE(FileBytes(started).starts_with(inheritance)) << FileBytes(started);
        EXPECT_NE(FileBytes(started), inheritance + std::to_string(getsid(0)) + "\n.\n") << "ends with our terminal";
        EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1) << "a child is left to wait for";
    }
    close(inherited);
}

} // namespace tarnwick::test
