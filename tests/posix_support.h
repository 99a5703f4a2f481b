#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <sstream>
#include <string>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tarnwick::test {

// A folder of a test's own, gone with the object. It replaces the home folder, so that no test sees the user's.
class TemporaryHome {
public:
    TemporaryHome() {
        std::string pattern = std::filesystem::temp_directory_path() / "tarnwick-test-XXXXXX";
        path_ = mkdtemp(pattern.data());
        Set("HOME", path_);
        Set("XDG_CONFIG_HOME", path_ + "/config");
    }
    ~TemporaryHome() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
        Set("HOME", home_);
        Set("XDG_CONFIG_HOME", config_);
    }
    TemporaryHome(const TemporaryHome&) = delete;
    TemporaryHome& operator=(const TemporaryHome&) = delete;

    const std::string& Path() const { return path_; }
    std::string operator/(const std::string& name) const { return path_ + "/" + name; }

    static void Set(const char* name, const std::optional<std::string>& value) {
        if (value)
            setenv(name, value->c_str(), 1);
        else
            unsetenv(name);
    }

private:
    static std::optional<std::string> Get(const char* name) {
        const char* value = std::getenv(name);
        return value != nullptr ? std::optional<std::string>(value) : std::nullopt;
    }

    std::optional<std::string> home_ = Get("HOME");
    std::optional<std::string> config_ = Get("XDG_CONFIG_HOME");
    std::string path_;
};

inline void WriteFile(const std::string& path, const std::string& bytes) {
    std::filesystem::create_directories(std::filesystem::path(path).parent_path());
    std::ofstream(path, std::ios::binary) << bytes;
}

inline std::string FileBytes(const std::string& path) {
    std::ostringstream bytes;
    bytes << std::ifstream(path, std::ios::binary).rdbuf();
    return bytes.str();
}

// The path as the program writes it.
inline std::string Backslashed(std::string path) {
    for (char& c : path)
        if (c == '/')
            c = '\\';
    return path;
}

// Runs `work` in a process of its own and gives its exit status: the result of `work`, or 128 and the signal.
template <class Work> int InChild(Work work) {
    const pid_t child = fork();
    if (child == 0)
        _exit(work());
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

// For InChild(): gives up root, whom permissions don't stop.
inline bool BecomeNobody() {
    constexpr unsigned Nobody = 65534;
    return geteuid() != 0 || (setgid(Nobody) == 0 && setuid(Nobody) == 0);
}

} // namespace tarnwick::test
