#pragma once

// What a key does in a window, on every desktop alike.

#include "window/Window.h"

#include <optional>
#include <string>

namespace tarnwick {

enum class Key { Tab, Enter, Space, Left, Right, Up, Down, Menu, Letter };

struct KeyPress {
    Key Which = Key::Letter;
    std::string Letter = {}; // of Key::Letter: the character as typed, in UTF-8
    bool Shift = false;
    bool Alt = false;
    bool Repeated = false; // by a key that is held down
};

// What follows from a key. A key that is not `Handled` is the control's own: text, the way through a grid or a tree.
struct KeyEffect {
    bool Handled = false;
    Control* Focus = nullptr;        // gets the focus first
    Control* Press = nullptr;        // is then clicked
    GridControl* OpenMenu = nullptr; // its pop-up opens at the selected row
};

// `focused` is the control that has the focus, or nullptr. A held key presses nothing a second time; a window that
// takes no input takes no key.
KeyEffect EffectOf(const KeyPress& key, const Window& window, const Control* focused);

} // namespace tarnwick
