#include "platform/win32/Win32Painting.h"

#include "platform/win32/Win32Look.h"
#include "window/Reach.h"

#include <windows.h>

#include <algorithm>
#include <iterator>

namespace tarnwick {

namespace {

RECT InPixels(const Rect& place, int dots) {
    return {PixelsOf(place.Left, dots), PixelsOf(place.Top, dots), PixelsOf(place.Left + place.Width, dots),
            PixelsOf(place.Top + place.Height, dots)};
}

bool Overlap(const Rect& one, const Rect& other) {
    return one.Left < other.Left + other.Width && other.Left < one.Left + one.Width &&
           one.Top < other.Top + other.Height && other.Top < one.Top + one.Height;
}

} // namespace

void PaintGround(HDC__* surface, HWND__* real, const Window& window, int dots) {
    RECT area;
    GetClientRect(real, &area);
    FillRect(surface, &area, BrushOf(ColorValue(window.BackColor, ColorRole::ButtonFace)));
    if (window.Edge != 0)
        DrawEdge(surface, &area, static_cast<UINT>(window.Edge), BF_RECT);
    const int thickness = std::max(1, ScaledPixels(1, dots));
    for (const Control* control : window.Controls) {
        const bool isLine = control->Kind == ControlKind::Line;
        if ((!isLine && control->Kind != ControlKind::Shape) || !IsShown(window, *control))
            continue;
        const HBRUSH brush = BrushOf(ColorValue(control->ForeColor, ColorRole::ButtonText));
        RECT side = InPixels(PlaceInWindow(*control), dots);
        if (isLine) {
            side.bottom = std::max<LONG>(side.bottom, side.top + thickness);
            FillRect(surface, &side, brush);
            continue;
        }
        for (int i = 0; i < thickness; ++i, InflateRect(&side, -1, -1))
            FrameRect(surface, &side, brush);
    }
}

std::vector<const Control*> ReadingOrder(const Window& window) {
    std::vector<const Control*> table;
    std::ranges::copy_if(window.Controls, std::back_inserter(table), [](const Control* control) {
        return control->Kind != ControlKind::Line && control->Kind != ControlKind::Shape;
    });
    std::vector<const Control*> order = table;
    const auto isStop = [](const Control* control) { return control->TabIndex >= 0; };
    std::vector<const Control*> stops;
    std::ranges::copy_if(order, std::back_inserter(stops), isStop);
    std::ranges::stable_sort(stops, {}, &Control::TabIndex);
    auto next = stops.begin();
    for (const Control*& place : order)
        if (isStop(place))
            place = *next++;
    for (auto front = table.begin(); front != table.end(); ++front)
        for (auto behind = table.begin(); behind != front; ++behind) {
            const auto early = std::ranges::find(order, *behind);
            const auto late = std::ranges::find(order, *front);
            if (early < late && (*front)->Container == (*behind)->Container &&
                Overlap((*front)->Place, (*behind)->Place))
                std::rotate(early, late, late + 1);
        }
    return order;
}

} // namespace tarnwick
