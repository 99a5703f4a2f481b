#pragma once

#include "platform/win32/Win32Handles.h"
#include "window/Window.h"

#include <vector>

namespace tarnwick {

// Paints the ground under the controls of a window: its colour, its edge, the lines and outlines of its table.
void PaintGround(HDC__* surface, HWND__* real, const Window& window, int dpi);

// The controls in the order in which their windows lie over each other, the first one in front: as a screen reader goes
// through them, which on this system is the same, but each one before what it lies over.
std::vector<const Control*> FrontToBack(const Window& window);

} // namespace tarnwick
