#pragma once

#include "platform/win32/Win32Handles.h"

#include <string>

namespace tarnwick {

// Tells screen readers a window's name and description; an empty text leaves what they find by themselves.
void SetAccessible(HWND__* window, const std::string& name, const std::string& description);

} // namespace tarnwick
