#pragma once

#include "platform/win32/Win32Handles.h"

#include <string>

namespace tarnwick {

// Gives screen readers a window's name and description; an empty text leaves what they find by themselves.
void SetAccessible(HWND__* window, const std::string& name, const std::string& description);
// Has screen readers speak the new texts that are announced for it.
void SetAnnouncing(HWND__* window);
void AnnounceText(HWND__* window);
// Before the window is destroyed: the system keeps what was set for it.
void ForgetAccessible(HWND__* window);

} // namespace tarnwick
