#include "window/Keyboard.h"

#include "window/Reach.h"

#include <algorithm>
#include <vector>

namespace tarnwick {

namespace {

KeyEffect PressEnter(const KeyPress& key, const Window& window, const Control* focused) {
    return {.Handled = true, .Press = key.Repeated ? nullptr : DefaultButton(window, focused)};
}

KeyEffect MoveChoice(const Window& window, const Control* focused, bool backwards) {
    if (focused == nullptr || focused->Kind != ControlKind::OptionButton)
        return {};
    const std::vector<OptionButton*> group = OptionGroup(window);
    const auto own = std::ranges::find(group, focused);
    if (own == group.end())
        return {.Handled = true};
    const auto count = static_cast<std::ptrdiff_t>(group.size());
    const std::ptrdiff_t next = (own - group.begin() + (backwards ? count - 1 : 1)) % count;
    OptionButton* target = group[static_cast<std::size_t>(next)];
    return {.Handled = true, .Focus = target, .Press = target};
}

KeyEffect OpenMenu(const Window& window, const Control* focused) {
    if (focused == nullptr || focused->Kind != ControlKind::Grid)
        return {};
    const auto grid = std::ranges::find(window.Controls, focused);
    const bool reached = grid != window.Controls.end() && IsReachable(window, **grid);
    return {.Handled = true, .OpenMenu = reached ? static_cast<GridControl*>(*grid) : nullptr};
}

KeyEffect PressAccessKey(const KeyPress& key, const Window& window) {
    const std::string letter = services().Text.Upper(key.Letter);
    for (Control* control : window.Controls)
        if (!letter.empty() && AccessKeyOf(*control) == letter && CanHaveFocus(window, *control)) {
            Control* const pressed = key.Repeated ? nullptr : control;
            return {.Handled = true, .Focus = pressed, .Press = pressed};
        }
    return {};
}

} // namespace

KeyEffect EffectOf(const KeyPress& key, const Window& window, const Control* focused) {
    if (!window.TakesInput())
        return {.Handled = true};
    switch (key.Which) {
    case Key::Tab:
        return {.Handled = true, .Focus = NextStop(window, focused, key.Shift)};
    case Key::Enter:
        return PressEnter(key, window, focused);
    case Key::Space:
        return {.Handled = key.Repeated && (focused == nullptr || focused->Kind != ControlKind::TextBox)};
    case Key::Left:
    case Key::Up:
        return MoveChoice(window, focused, true);
    case Key::Right:
    case Key::Down:
        return MoveChoice(window, focused, false);
    case Key::Menu:
        return OpenMenu(window, focused);
    case Key::Letter:
        return key.Alt ? PressAccessKey(key, window) : KeyEffect{};
    }
    return {};
}

} // namespace tarnwick
