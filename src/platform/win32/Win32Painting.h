#pragma once

#include "platform/win32/Win32Handles.h"
#include "window/Window.h"

#include <vector>

namespace tarnwick {

// Paints the ground under the controls of a window: its colour, its edge, the lines and outlines of its table.
void PaintGround(HDC__* surface, HWND__* real, const Window& window, int dots);

// The controls as a screen reader shall go through them, which on this system is the order in which they lie over each
// other: in the order of the table, those in the tab order by that, and each one before what it lies over.
std::vector<const Control*> ReadingOrder(const Window& window);

} // namespace tarnwick
