#include "contract_files.h"
#include "win32_support.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <random>

namespace tarnwick::test {
namespace {

class WindowsFiles : public FilesMachine {
public:
    WindowsFiles() { std::filesystem::create_directories(home_); }
    ~WindowsFiles() override {
        // The links alone go: Wine shows one as a folder, and a clean-up would walk through it.
        for (const std::string& link : links_)
            if (!RemoveDirectoryW(WideOf(link).c_str()))
                Run("Z:\\bin\\rm -f \"" + link.substr(link.rfind('\\') + 1) + "\"", link.substr(0, link.rfind('\\')));
        std::error_code ignored;
        std::filesystem::remove_all(home_, ignored);
    }

    FileService& Files() override { return files_; }
    std::string Path(const std::string& name) override { return NarrowOf(home_.wstring()) + "\\" + name; }
    void MakeFile(const std::string& name, const std::string& bytes) override {
        const std::wstring path = Long(name);
        std::filesystem::create_directories(std::filesystem::path(path).parent_path());
        std::ofstream(std::filesystem::path(path), std::ios::binary) << bytes;
    }
    void MakeFolder(const std::string& name) override { std::filesystem::create_directories(Long(name)); }
    void MakeReadOnly(const std::string& name) override {
        SetFileAttributesW(Long(name).c_str(), FILE_ATTRIBUTE_READONLY);
    }
    bool Link(const std::string& name, const std::string& target, bool folder) override {
        const std::string path = Path(name);
        const std::string place = path.substr(0, path.rfind('\\'));
        Run("cmd /c mklink " + std::string(folder ? "/J \"" : "\"") + path + "\" \"" + Path(target) + "\"", place);
        if (!IsThere(path) && folder) { // under Wine, which knows no such links
            std::string unixTarget = "../" + target;
            std::ranges::replace(unixTarget, '\\', '/');
            Run("Z:\\bin\\ln -s \"" + unixTarget + "\" \"" + path.substr(path.rfind('\\') + 1) + "\"", place);
            // Wine doesn't wait for a program of the system below it.
            for (int i = 0; i < 200 && !IsThere(path); ++i)
                Sleep(10);
        }
        if (IsThere(path) && folder)
            links_.push_back(path);
        return IsThere(path);
    }

private:
    std::wstring Long(const std::string& name) { return LR"(\\?\)" + WideOf(Path(name)); }
    static bool IsThere(const std::string& path) {
        return GetFileAttributesW(WideOf(path).c_str()) != INVALID_FILE_ATTRIBUTES;
    }
    static void Run(std::string command, const std::string& folder) {
        STARTUPINFOA start = {};
        start.cb = sizeof start;
        PROCESS_INFORMATION process = {};
        if (!CreateProcessA(nullptr, command.data(), nullptr, nullptr, FALSE, CREATE_NO_WINDOW, nullptr, folder.c_str(),
                            &start, &process))
            return;
        WaitForSingleObject(process.hProcess, 10000);
        CloseHandle(process.hThread);
        CloseHandle(process.hProcess);
    }

    const std::filesystem::path home_ =
        std::filesystem::temp_directory_path() / ("tarnwick-test-" + std::to_string(std::random_device()()));
    Win32Files files_;
    std::vector<std::string> links_;
};

} // namespace

std::unique_ptr<FilesMachine> MakeFilesMachine() { return std::make_unique<WindowsFiles>(); }

namespace {

TEST(Win32FilesTest, NamesAFolderForTheFavorites) {
    const std::string folder = Win32Files().FavoritesFolder();
    EXPECT_TRUE(std::filesystem::is_directory(WideOf(folder))) << folder;
}

} // namespace
} // namespace tarnwick::test
