#pragma once

// Where the controls of a window lie, and which of them a person can reach: by mouse, key, focus or screen reader.

#include "window/Window.h"

#include <vector>

namespace tarnwick {

// Its place in the window's client area, in twips.
Rect PlaceInWindow(const Control& control);

// Visible, as are the frames that it lies in, and no frame in front hides the whole of it. For a screen reader no other
// control exists.
bool IsShown(const Window& window, const Control& control);

// Shown and enabled: a person can work with it.
bool IsReachable(const Window& window, const Control& control);

// The control in front at a point of the client area, in twips; nullptr for the window's background. Lines and outlines
// are background.
Control* ControlAt(const Window& window, int x, int y);

// Reachable by Tab: it has a place in the tab order.
bool CanHaveFocus(const Window& window, const Control& control);

// The controls in the order in which a screen reader goes through them: that of the table, in which those with a place
// in the tab order come by that. Lines and outlines are nothing to read.
std::vector<const Control*> ReadingOrder(const Window& window);

// Whether there is anything in it to read: a label without a text and without a name is none.
bool IsRead(const Control& control);

// The next control in the tab order after `from`, round the end; the first one with nullptr or a control that isn't in
// the order. Of the option buttons only the chosen one is a stop. nullptr when there is no stop.
Control* NextStop(const Window& window, const Control* from, bool backwards);

// The control that has the focus where `last` had it: `last` itself while it can have it, else the next stop.
Control* FocusAfter(const Window& window, const Control* last);

// The option buttons that can have the focus, in the tab order.
std::vector<OptionButton*> OptionGroup(const Window& window);

// The button that Enter presses: `focused` if it is one, else the window's default one. nullptr when it can't be
// reached.
CommandButton* DefaultButton(const Window& window, const Control* focused);

// The letter after the first single "&" of a caption, in upper case; the empty text when there is none.
std::string AccessKeyOf(const Control& control);

} // namespace tarnwick
