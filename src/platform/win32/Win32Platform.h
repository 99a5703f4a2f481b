#pragma once

#include "platform/win32/Win32Files.h"
#include "platform/win32/Win32Settings.h"
#include "platform/win32/Win32Shell.h"
#include "platform/win32/Win32Sockets.h"
#include "platform/win32/Win32Text.h"
#include "platform/win32/Win32Windows.h"
#include "services/SteadyClock.h"

namespace tarnwick {

// A whole machine, in use for as long as the object lives.
struct Win32Platform {
    SteadyClock Clock;
    Win32Files Files;
    Win32Settings Settings;
    Win32Sockets Sockets;
    Win32Windows Windows{Clock};
    Win32Shell Shell;
    Win32Text Text;
    ServicesInUse InUse{{Files, Settings, Sockets, Windows, Clock, Shell, Text}};
};

} // namespace tarnwick
