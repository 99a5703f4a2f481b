#pragma once

#include "platform/headless/Fakes.h"
#include "platform/headless/HeadlessWindows.h"
#include "platform/posix/PosixFiles.h"
#include "platform/posix/PosixSettings.h"
#include "platform/posix/PosixSockets.h"
#include "platform/posix/PosixText.h"
#include "platform/posix/RegularFile.h"
#include "services/SteadyClock.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include <arpa/inet.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tarnwick::test {

// A folder of a test's own, removed with the object. It replaces the home folder for good, so that no test sees the
// user's.
class TemporaryHome {
public:
    TemporaryHome() {
        setenv("HOME", path_.c_str(), 1);
        setenv("XDG_CONFIG_HOME", (*this / "config").c_str(), 1);
    }
    ~TemporaryHome() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    TemporaryHome(const TemporaryHome&) = delete;
    TemporaryHome& operator=(const TemporaryHome&) = delete;

    const std::string& Path() const { return path_; }
    std::string operator/(const std::string& name) const { return path_ + "/" + SystemPath(name); }
    PosixSettings Settings() const { return {}; }
    // A link `name` to another path in the folder.
    bool Link(const std::string& name, const std::string& target, bool /*folder*/) const {
        return symlink((*this / target).c_str(), (*this / name).c_str()) == 0;
    }

private:
    const std::string path_ = mkdtemp((std::filesystem::temp_directory_path() / "tarnwick-XXXXXX").string().data());
};

using SystemFiles = PosixFiles;
using SystemText = PosixText;

inline int closesocket(int socket) { return close(socket); }

inline void WriteFile(const std::filesystem::path& path, const std::string& bytes) {
    std::filesystem::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << bytes;
}

inline std::string FileBytes(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

// Runs `work` in a process of its own and returns its exit status: the result of `work`, or 128 and the signal.
template <class Work> int InChild(Work work) {
    const pid_t child = fork();
    if (child == 0)
        _exit(work());
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

// The real services of this system under windows without a screen, in use for as long as the object lives. The
// Favorites folder is the one of the environment (TemporaryHome).
template <class SettingsKind, class WindowsKind = HeadlessWindows> struct PosixMachineWith {
    SteadyClock Clock;
    MessageLoop Loop{Clock};
    PosixFiles Files;
    SettingsKind Settings;
    PosixSockets Sockets{Loop};
    WindowsKind Windows{Loop, Sockets, Clock};
    RecordingShell Shell;
    PosixText Text;
    ServicesInUse InUse{{Files, Settings, Sockets, Windows, Clock, Shell, Text}};
};

using PosixMachine = PosixMachineWith<MemorySettings>;

} // namespace tarnwick::test
