#pragma once

// What a person does to a window. A front end says which gesture its desktop has seen; what follows from it is decided
// here: a window that is hidden or behind a modal one takes nothing, nor does a control that can't be reached, and a
// click counts for what the button showed when it was pressed.

#include "window/Window.h"

#include <string>
#include <string_view>

namespace tarnwick {

class Input {
public:
    explicit Input(Window& window) : window_(window) {}

    // The mouse button, or a key that holds it down, presses a control. `shown` is the caption that it showed then.
    void Press(const Control& control, std::string_view shown);
    // The press ends over this control, or over none: a click where it began there.
    void Release(Control* control);
    // A click: the end of a press, or one without a press of its own (a key, a screen reader's action), for which
    // `shown` is what the control shows. A button or a label raises its Click; a check box changes its state first, an
    // option button takes the mark from the others.
    void Click(Control& control, std::string_view shown);

    void Tick(TreeControl& tree, int index);
    // The user's new text of a field. Nothing that makes it longer than its MaxLength is taken; false then, and the
    // field keeps its text.
    bool Edit(TextBox& field, std::string_view text);
    // A row that isn't there changes nothing.
    void Select(GridControl& grid, int row);
    // Selects the next row whose first column begins with `text`, regardless of case, and gives it; 0 when none does,
    // and nothing changes then.
    int SelectByText(GridControl& grid, std::string_view text);
    void ClickHeader(GridControl& grid, int column);
    // `button` as in GridControl::MouseButton; the menu key counts as the right one.
    void PressGrid(GridControl& grid, int button, int shift, int x, int y);
    // The mouse is over this point of the client area, in twips.
    void MoveMouse(int x, int y);
    // The close box, and every other way to close a window. A window without a frame has none.
    void Close();

private:
    bool Takes(const Control& control) const;
    void Choose(OptionButton& chosen);

    Window& window_;
    const Control* pressed_ = nullptr;
    std::string pressedCaption_;
};

} // namespace tarnwick
