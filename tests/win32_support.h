#pragma once

#include "platform/headless/Fakes.h"
#include "platform/win32/Win32Platform.h"

#include <winsock2.h>

#include <windows.h>
#include <ws2tcpip.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <random>

namespace tarnwick::test {

// A machine with real windows and sockets, whose files and settings live in memory.
struct Win32Machine {
    SteadyClock Clock;
    MemoryFavorites Favorites;
    MemorySettings Settings;
    Win32Sockets Sockets;
    Win32Windows Windows{Clock};
    RecordingShell Shell;
    Win32Text Text;
    ServicesInUse InUse{{Favorites, Settings, Sockets, Windows, Clock, Shell, Text}};
};

// A folder and a key of the registry of a test's own, removed with the object. The test runs in the folder.
class TemporaryHome {
public:
    TemporaryHome() {
        std::filesystem::create_directories(path_);
        std::filesystem::current_path(path_);
    }
    ~TemporaryHome() {
        RegDeleteTreeA(HKEY_CURRENT_USER, Key.c_str());
        std::filesystem::current_path(path_.parent_path());
        std::error_code left; // under Wine, which can't remove a link to a folder
        std::filesystem::remove_all(path_, left);
        if (left)
            WinExec(("Z:\\bin\\rm -rf " + path_.filename().string()).c_str(), SW_HIDE);
    }
    TemporaryHome(const TemporaryHome&) = delete;
    TemporaryHome& operator=(const TemporaryHome&) = delete;

    std::string Path() const { return Utf8Of(path_.wstring()); }
    // As the system takes a path that may be long.
    std::filesystem::path operator/(const std::string& name) const {
        return LR"(\\?\)" + path_.wstring() + L"\\" + WideOf(name);
    }
    Win32Settings Settings() const { return Win32Settings(Key); }
    // A link `name` to another path in the folder. False where the system has no way to make one.
    bool Link(const std::string& name, const std::string& target, bool folder) const {
        const std::string kind = folder ? "/J" : "";
        std::system(("mklink " + kind + " \"" + name + "\" \"" + Path() + "\\" + target + "\" 2>nul").c_str());
        // Wine knows no such links, and doesn't wait for a program of the system below it.
        if (folder && !std::filesystem::exists(name)) {
            const std::string unixName = std::filesystem::path(name).generic_string();
            WinExec(("Z:\\bin\\ln -s ../" + target + " \"" + unixName + "\"").c_str(), SW_HIDE);
            for (int i = 0; i < 200 && !std::filesystem::exists(name); ++i)
                Sleep(10);
        }
        return std::filesystem::exists(name);
    }

    const std::string Key = "Software\\Tarnwick tests\\" + std::to_string(GetCurrentProcessId());

private:
    const std::filesystem::path path_ =
        std::filesystem::temp_directory_path() / ("tarnwick-test-" + std::to_string(std::random_device()()));
};

using SystemFiles = Win32Files;
using SystemText = Win32Text;

} // namespace tarnwick::test
