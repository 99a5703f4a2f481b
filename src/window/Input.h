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
    // The desktop has made a click of the press on this control. Where it has reported no press, the click counts for
    // `shown`, what the control showed. A button or a label raises its Click; a check box changes its state first, an
    // option button takes the mark from the others.
    void Click(Control& control, std::string_view shown);
    // A key or a screen reader's action presses a control: press and click at once. A desktop may see both parts, one
    // of them or neither (a reader's action, an access key of another control), so it is one thing here, and a press of
    // the mouse that is under way elsewhere ends without a click.
    void PressAndClick(Control& control, std::string_view shown);

    void Tick(TreeControl& tree, int index);
    // The user's new text of a field. What was typed or pasted ends before its first line end, and nothing that makes
    // the text longer than MaxLength is taken: the field then keeps its text. The real field shows the field's text.
    void Edit(TextBox& field, std::string_view text);
    // A row that isn't there changes nothing.
    void Select(GridControl& grid, int row);
    // Selects the next row whose first column begins with `text`, regardless of case, and returns it; 0 when none does,
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
