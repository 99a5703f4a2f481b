#pragma once

// The keys that work on a whole window: the tab order of its table, access keys, the default button, the menu key. The
// system's own dialog keys know only the order in which windows lie over each other.

#include "platform/win32/Win32Window.h"

namespace tarnwick {

// True: the key has been handled.
bool HandleKey(Win32Window& window, const tagMSG& message);

bool CanHaveFocus(const Win32Window& window, const Control& control);
// The next control of the tab order behind `from` (nullptr: the first one) that can have the focus; of the option
// buttons, which are one stop, the selected one. nullptr when there is none.
Win32Control* NextStop(const Win32Window& window, const Control* from, bool backwards);

} // namespace tarnwick
