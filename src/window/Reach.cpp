#include "window/Reach.h"

#include "text/Utf8.h"

#include <algorithm>

namespace tarnwick {

namespace {

bool Contains(const Rect& outer, const Rect& inner) {
    return outer.Left <= inner.Left && outer.Top <= inner.Top && outer.Left + outer.Width >= inner.Left + inner.Width &&
           outer.Top + outer.Height >= inner.Top + inner.Height;
}

template <bool Control::*Field> bool HoldsUpwards(const Control& control) {
    return control.*Field && (control.Container == nullptr || HoldsUpwards<Field>(**control.Container));
}

bool IsVisible(const Control& control) { return HoldsUpwards<&Control::Visible>(control); }

// Only frames are large enough to hide another control; a control's own frame is under it.
bool IsCovered(const Window& window, const Control& control) {
    const Rect place = PlaceInWindow(control);
    const auto own = std::ranges::find(window.Controls, &control);
    return std::any_of(own, window.Controls.end(), [&](const Control* front) {
        return front != &control && front->Kind == ControlKind::Frame && IsVisible(*front) &&
               Contains(PlaceInWindow(*front), place);
    });
}

std::vector<Control*> InTabOrder(const Window& window) {
    std::vector<Control*> stops;
    std::ranges::copy_if(window.Controls, std::back_inserter(stops), [](const Control* c) { return c->TabIndex >= 0; });
    std::ranges::stable_sort(stops, {}, [](const Control* control) -> int { return control->TabIndex; });
    return stops;
}

bool IsStop(const Window& window, const Control& control) {
    const bool passed = control.Kind == ControlKind::OptionButton && !static_cast<const OptionButton&>(control).Value;
    return !passed && CanHaveFocus(window, control);
}

bool HasAccessKey(const Control& control) {
    return control.Kind == ControlKind::CommandButton || control.Kind == ControlKind::CheckBox ||
           control.Kind == ControlKind::OptionButton;
}

} // namespace

Rect PlaceInWindow(const Control& control) {
    Rect place = control.Place;
    for (const Control* above = control.Container; above != nullptr; above = above->Container) {
        place.Left += above->Place->Left;
        place.Top += above->Place->Top;
    }
    return place;
}

bool IsShown(const Window& window, const Control& control) { return IsVisible(control) && !IsCovered(window, control); }

bool IsReachable(const Window& window, const Control& control) {
    return HoldsUpwards<&Control::Enabled>(control) && IsShown(window, control);
}

Control* ControlAt(const Window& window, int x, int y) {
    for (auto control = window.Controls.rbegin(); control != window.Controls.rend(); ++control) {
        if ((*control)->Kind == ControlKind::Line || (*control)->Kind == ControlKind::Shape || !IsVisible(**control))
            continue;
        const Rect place = PlaceInWindow(**control);
        if (x >= place.Left && x < place.Left + place.Width && y >= place.Top && y < place.Top + place.Height)
            return *control;
    }
    return nullptr;
}

bool CanHaveFocus(const Window& window, const Control& control) {
    return control.TabIndex >= 0 && IsReachable(window, control);
}

std::vector<const Control*> ReadingOrder(const Window& window) {
    const std::vector<Control*> stops = InTabOrder(window);
    auto next = stops.begin();
    std::vector<const Control*> order;
    for (const Control* control : window.Controls)
        if (control->Kind != ControlKind::Line && control->Kind != ControlKind::Shape)
            order.push_back(control->TabIndex >= 0 ? *next++ : control);
    return order;
}

bool IsRead(const Control& control) {
    return control.Kind != ControlKind::Label || !control.Caption.empty() || !control.AccessibleName->empty();
}

Control* NextStop(const Window& window, const Control* from, bool backwards) {
    std::vector<Control*> stops = InTabOrder(window);
    if (backwards)
        std::ranges::reverse(stops);
    if (const auto own = std::ranges::find(stops, from); own != stops.end())
        std::rotate(stops.begin(), own + 1, stops.end());
    const auto next = std::ranges::find_if(stops, [&](const Control* control) { return IsStop(window, *control); });
    return next == stops.end() ? nullptr : *next;
}

Control* FocusAfter(const Window& window, const Control* last) {
    const auto own = std::ranges::find(window.Controls, last);
    return own != window.Controls.end() && CanHaveFocus(window, **own) ? *own : NextStop(window, last, false);
}

std::vector<OptionButton*> OptionGroup(const Window& window) {
    std::vector<OptionButton*> group;
    for (Control* control : InTabOrder(window))
        if (control->Kind == ControlKind::OptionButton && CanHaveFocus(window, *control))
            group.push_back(static_cast<OptionButton*>(control));
    return group;
}

CommandButton* DefaultButton(const Window& window, const Control* focused) {
    const auto pressed = std::ranges::find_if(window.Controls, [&](const Control* control) {
        if (control->Kind != ControlKind::CommandButton)
            return false;
        const bool onButton = focused != nullptr && focused->Kind == ControlKind::CommandButton;
        return onButton ? control == focused : *static_cast<const CommandButton*>(control)->Default;
    });
    return pressed != window.Controls.end() && IsReachable(window, **pressed) ? static_cast<CommandButton*>(*pressed)
                                                                              : nullptr;
}

std::string AccessKeyOf(const Control& control) {
    const std::string& caption = control.Caption;
    if (!HasAccessKey(control))
        return {};
    for (std::size_t at = caption.find('&'); at != std::string::npos && at + 1 < caption.size();
         at = caption.find('&', at + 2))
        if (caption[at + 1] != '&')
            return services().Text.Upper(caption.substr(at + 1, DecodeUtf8(caption, at + 1).Bytes));
    return {};
}

} // namespace tarnwick
