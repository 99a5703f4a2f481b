#include "window/Input.h"

#include "text/Text.h"
#include "window/Reach.h"

#include <algorithm>
#include <utility>

namespace tarnwick {

namespace {

// `after` without what follows a line end in the part that `before` doesn't have.
std::string WithoutNewLines(std::string_view before, std::string_view after) {
    const auto start = std::ranges::mismatch(before, after).in2 - after.begin();
    const std::string_view unchanged = before.substr(static_cast<std::size_t>(start));
    std::string_view added = after.substr(static_cast<std::size_t>(start));
    std::size_t kept = 0; // bytes at the end
    while (kept < std::min(unchanged.size(), added.size()) &&
           unchanged[unchanged.size() - kept - 1] == added[added.size() - kept - 1])
        ++kept;
    const std::string_view end = added.substr(added.size() - kept);
    added.remove_suffix(kept);
    return std::string(after.substr(0, static_cast<std::size_t>(start))).append(FirstLine(added)).append(end);
}

} // namespace

bool Input::Takes(const Control& control) const { return window_.TakesInput() && IsReachable(window_, control); }

void Input::Press(const Control& control, std::string_view shown) {
    pressed_ = Takes(control) ? &control : nullptr;
    pressedCaption_ = shown;
}

void Input::Release(Control* control) {
    if (control != nullptr && control == pressed_)
        Click(*control, pressedCaption_);
    pressed_ = nullptr;
}

void Input::Click(Control& control, std::string_view shown) {
    const bool completesPress = std::exchange(pressed_, nullptr) == &control;
    if (control.Caption != (completesPress ? std::string_view(pressedCaption_) : shown) || !Takes(control))
        return;
    if (control.Kind == ControlKind::CheckBox) {
        auto& box = static_cast<CheckBox&>(control);
        box.Value = box.Value == 0 ? 1 : 0;
    } else if (control.Kind == ControlKind::OptionButton) {
        Choose(static_cast<OptionButton&>(control));
    }
    window_.Raise(control.Click);
}

void Input::PressAndClick(Control& control, std::string_view shown) {
    pressed_ = nullptr;
    Click(control, shown);
}

void Input::Choose(OptionButton& chosen) {
    for (Control* control : window_.Controls)
        if (control->Kind == ControlKind::OptionButton)
            static_cast<OptionButton*>(control)->Value = control == &chosen;
}

void Input::Tick(TreeControl& tree, int index) {
    if (index < 1 || index > tree.Nodes().Count() || !tree.NodeAt(index).HasCheck || !Takes(tree))
        return;
    const std::int32_t value = tree.NodeCheck(index) == 0 ? 1 : 0;
    tree.SetNodeCheck(index, value);
    window_.Raise(tree.Check, index, value);
}

void Input::Edit(TextBox& field, std::string_view text) {
    if (!Takes(field))
        return;
    const std::string edited = WithoutNewLines(field.Text, text);
    const std::size_t length = CharacterCount(edited);
    const bool fits = field.MaxLength == 0 || length <= static_cast<std::size_t>(*field.MaxLength);
    if (fits || length < CharacterCount(field.Text))
        field.Text = edited;
}

void Input::Select(GridControl& grid, int row) {
    if (row >= 1 && row <= grid.RowCount() && Takes(grid))
        grid.SelectedRow = row;
}

int Input::SelectByText(GridControl& grid, std::string_view text) {
    const int row = Takes(grid) ? grid.FindRow(text) : 0;
    if (row != 0)
        grid.SelectedRow = row;
    return row;
}

void Input::ClickHeader(GridControl& grid, int column) {
    if (Takes(grid))
        window_.Raise(grid.HeaderClick, column);
}

void Input::PressGrid(GridControl& grid, int button, int shift, int x, int y) {
    if (Takes(grid))
        window_.Raise(grid.MouseButton, button, shift, x, y);
}

void Input::MoveMouse(int x, int y) {
    if (!window_.TakesInput())
        return;
    const Control* control = ControlAt(window_, x, y);
    window_.Raise(control == nullptr ? window_.MouseMove : control->MouseMove);
}

void Input::Close() {
    if (window_.Border != FrameStyle::None && window_.TakesInput())
        window_.Unload();
}

} // namespace tarnwick
