#include "platform/win32/Win32Geometry.h"

#include <algorithm>

namespace tarnwick {

namespace {

bool LiesIn(const Control& control, const Control& container) {
    for (const Control* above = control.Container; above != nullptr; above = above->Container)
        if (above == &container)
            return true;
    return false;
}

bool Contains(const Rect& outer, const Rect& inner) {
    return outer.Left <= inner.Left && outer.Top <= inner.Top && outer.Left + outer.Width >= inner.Left + inner.Width &&
           outer.Top + outer.Height >= inner.Top + inner.Height;
}

} // namespace

bool IsShown(const Control& control) {
    return control.Visible && (control.Container == nullptr || IsShown(*control.Container));
}

Rect PlaceInWindow(const Control& control) {
    Rect place = control.Place;
    for (const Control* above = control.Container; above != nullptr; above = above->Container) {
        place.Left += above->Place.Left;
        place.Top += above->Place.Top;
    }
    return place;
}

bool IsCovered(const Window& window, const Control& control) {
    const Rect place = PlaceInWindow(control);
    const auto own = std::ranges::find(window.Controls, &control);
    return std::any_of(own, window.Controls.end(), [&](const Control* front) {
        return front != &control && front->Kind == ControlKind::Frame && IsShown(*front) && !LiesIn(control, *front) &&
               Contains(PlaceInWindow(*front), place);
    });
}

bool IsReachable(const Window& window, const Control& control) {
    return IsShown(control) && control.Enabled && !IsCovered(window, control);
}

Control* ControlAt(const Window& window, int x, int y) {
    for (auto control = window.Controls.rbegin(); control != window.Controls.rend(); ++control) {
        if ((*control)->Kind == ControlKind::Line || (*control)->Kind == ControlKind::Shape || !IsShown(**control))
            continue;
        const Rect place = PlaceInWindow(**control);
        if (x >= place.Left && x < place.Left + place.Width && y >= place.Top && y < place.Top + place.Height)
            return *control;
    }
    return nullptr;
}

} // namespace tarnwick
