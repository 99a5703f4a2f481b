#pragma once

// Where the controls of a window's table lie and which of them the user can reach.

#include "window/Window.h"

namespace tarnwick {

// Visible, as are the frames that it lies in.
bool IsShown(const Control& control);
// Its place in the window's client area, in twips.
Rect PlaceInWindow(const Control& control);
// A frame that stands in front of it hides the whole of it.
bool IsCovered(const Window& window, const Control& control);
// Visible, enabled and not covered: the user can work with it.
bool IsReachable(const Window& window, const Control& control);
// The control in front at a point of the client area, in twips; nullptr for the window's background. Lines and outlines
// are background.
Control* ControlAt(const Window& window, int x, int y);

} // namespace tarnwick
