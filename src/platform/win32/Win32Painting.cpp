#include "platform/win32/Win32Painting.h"

#include "platform/win32/Win32Look.h"
#include "window/Reach.h"

#include <windows.h>

#include <algorithm>

namespace tarnwick {

namespace {

RECT InPixels(const Rect& place, int dpi) {
    return {PixelsOf(place.Left, dpi), PixelsOf(place.Top, dpi), PixelsOf(place.Left + place.Width, dpi),
            PixelsOf(place.Top + place.Height, dpi)};
}

bool Overlap(const Rect& one, const Rect& other) {
    return one.Left < other.Left + other.Width && other.Left < one.Left + one.Width &&
           one.Top < other.Top + other.Height && other.Top < one.Top + one.Height;
}

} // namespace

void PaintGround(HDC__* surface, HWND__* real, const Window& window, int dpi) {
    RECT area;
    GetClientRect(real, &area);
    FillRect(surface, &area, BrushOf(ColorValue(window.BackColor, ColorRole::ButtonFace)));
    if (window.Edge != 0)
        DrawEdge(surface, &area, static_cast<UINT>(window.Edge), BF_RECT);
    const int thickness = std::max(1, ScaledPixels(1, dpi));
    for (const Control* control : window.Controls) {
        const bool isLine = control->Kind == ControlKind::Line;
        if ((!isLine && control->Kind != ControlKind::Shape) || !IsShown(window, *control))
            continue;
        const HBRUSH brush = BrushOf(ColorValue(control->ForeColor, ColorRole::ButtonText));
        RECT side = InPixels(PlaceInWindow(*control), dpi);
        if (isLine) {
            side.bottom = std::max<LONG>(side.bottom, side.top + thickness);
            FillRect(surface, &side, brush);
            continue;
        }
        for (int i = 0; i < thickness; ++i, InflateRect(&side, -1, -1))
            FrameRect(surface, &side, brush);
    }
}

std::vector<const Control*> FrontToBack(const Window& window) {
    std::vector<const Control*> order = ReadingOrder(window);
    const std::vector<Control*>& table = window.Controls;
    for (auto upper = table.begin(); upper != table.end(); ++upper)
        for (auto lower = table.begin(); lower != upper; ++lower) {
            const auto early = std::ranges::find(order, *lower);
            const auto late = std::ranges::find(order, *upper);
            if (early < late && late != order.end() && *(*upper)->Container == *(*lower)->Container &&
                Overlap(*(*upper)->Place, *(*lower)->Place))
                std::rotate(early, late, late + 1);
        }
    return order;
}

} // namespace tarnwick
