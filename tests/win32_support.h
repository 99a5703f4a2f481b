#pragma once

#include "platform/headless/Fakes.h"
#include "platform/win32/Win32Platform.h"

#include <winsock2.h>

#include <windows.h>

#include <gtest/gtest.h>

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

} // namespace tarnwick::test
