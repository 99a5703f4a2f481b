#pragma once

// Real windows, files and sockets of the system, away from the user's own.

#include "platform/headless/Fakes.h"
#include "platform/win32/Win32Platform.h"

#include <winsock2.h>

#include <windows.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace tarnwick::test {

// A folder of a test's own, gone with the object.
class TemporaryFolder {
public:
    TemporaryFolder() {
        static int number = 0;
        path_ = std::filesystem::temp_directory_path() /
                ("tarnwick-test-" + std::to_string(GetTickCount64()) + "-" + std::to_string(++number));
        std::filesystem::create_directories(path_);
    }
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    // The path of a name in it, in UTF-8 as the program has it.
    std::string operator/(const std::string& name) const { return NarrowOf(path_.wstring()) + "\\" + name; }

private:
    std::filesystem::path path_;
};

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

} // namespace tarnwick::test
