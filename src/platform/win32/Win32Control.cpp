#include "platform/win32/Win32Control.h"

#include "platform/win32/Win32Accessible.h"
#include "platform/win32/Win32Buttons.h"
#include "platform/win32/Win32Grid.h"
#include "platform/win32/Win32Look.h"
#include "platform/win32/Win32Statics.h"
#include "platform/win32/Win32Text.h"
#include "platform/win32/Win32TextBox.h"
#include "platform/win32/Win32Tree.h"
#include "platform/win32/Win32Window.h"
#include "window/Reach.h"

#include <windows.h>

namespace tarnwick {

std::unique_ptr<Win32Control> Win32Control::Make(Win32Window& owner, Control& model, HWND__* parent, int number) {
    switch (model.Kind) {
    case ControlKind::Label:
        return std::make_unique<Win32Label>(owner, static_cast<Label&>(model), parent, number);
    case ControlKind::CommandButton:
        return std::make_unique<Win32CommandButton>(owner, static_cast<CommandButton&>(model), parent, number);
    case ControlKind::CheckBox:
        return std::make_unique<Win32Mark>(owner, static_cast<CheckBox&>(model), parent, number);
    case ControlKind::OptionButton:
        return std::make_unique<Win32Mark>(owner, static_cast<OptionButton&>(model), parent, number);
    case ControlKind::TextBox:
        return std::make_unique<Win32TextBox>(owner, static_cast<TextBox&>(model), parent, number);
    case ControlKind::Frame:
        return std::make_unique<Win32Frame>(owner, static_cast<Frame&>(model), parent, number);
    case ControlKind::PictureBox:
        return std::make_unique<Win32Picture>(owner, static_cast<PictureBox&>(model), parent, number);
    case ControlKind::Grid:
        return std::make_unique<Win32Grid>(owner, static_cast<GridControl&>(model), parent, number);
    case ControlKind::Tree:
        return std::make_unique<Win32Tree>(owner, static_cast<TreeControl&>(model), parent, number);
    case ControlKind::Line:
    case ControlKind::Shape:
        break;
    }
    return nullptr;
}

Win32Control::Win32Control(Win32Window& owner, Control& model, HWND__* parent, int number, const Type& type)
    : owner_(owner), model_(model) {
    real_ =
        CreateWindowExW(type.ExtendedStyle, type.Class, nullptr, type.Style | WS_CHILD | WS_CLIPSIBLINGS, 0, 0, 0, 0,
                        parent, reinterpret_cast<HMENU>(std::intptr_t{number}), GetModuleHandleW(nullptr), nullptr);
    SetWindowLongPtrW(real_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    SetAccessible(real_, model.AccessibleName, model.AccessibleDescription);
}

void Win32Control::Place(int dpi) {
    dpi_ = dpi;
    // Both corners are rounded, so that what meets in twips meets in pixels.
    const Rect& place = *model_.Place;
    const int left = PixelsOf(place.Left, dpi);
    const int top = PixelsOf(place.Top, dpi);
    SetWindowPos(real_, nullptr, left, top, PixelsOf(place.Left + place.Width, dpi) - left,
                 PixelsOf(place.Top + place.Height, dpi) - top, SWP_NOZORDER | SWP_NOACTIVATE);
    ShowFont();
    Scale(dpi);
}

void Win32Control::ShowFont() { Send(WM_SETFONT, reinterpret_cast<WPARAM>(FontOf(model_.Font, dpi_)), TRUE); }

void Win32Control::Sync() {
    if (font_.Differs(model_.Font))
        ShowFont();
    if (colors_.Differs({model_.ForeColor, model_.BackColor}))
        ShowColors();
    SyncContent();
    // What can't be seen doesn't exist for a screen reader either.
    const bool shown = IsShown(owner_.Model(), model_);
    if (const bool enabled = !shown || IsReachable(owner_.Model(), model_); enabled_.Differs(enabled))
        EnableWindow(real_, enabled);
    if (const bool visible = shown && !IsEmpty(); visible_.Differs(visible))
        ShowWindow(real_, visible ? SW_SHOWNA : SW_HIDE);
    ShowLast();
}

void Win32Control::ShowColors() { InvalidateRect(real_, nullptr, TRUE); }

HBRUSH__* Win32Control::PrepareColors(HDC__* surface) const {
    const auto isOwn = [](const Color& color) {
        return color.Role != ColorRole::ControlDefault && color.Role != ColorRole::Transparent;
    };
    const Color below = HasOwnGround()                ? Color::Of(ColorRole::WindowBackground)
                        : model_.Container != nullptr ? (*model_.Container)->BackColor
                                                      : owner_.Model().BackColor;
    const COLORREF back = ColorValue(isOwn(model_.BackColor) ? model_.BackColor : below, ColorRole::ButtonFace);
    SetTextColor(surface, ReadableOn(back, ColorValue(model_.ForeColor, ColorRole::ButtonText)));
    SetBkColor(surface, back);
    return BrushOf(back);
}

void Win32Control::ShowText(const std::string& text, bool literal) {
    if (text_.Differs(text))
        SetWindowTextW(real_, (literal ? LiteralCaption(text) : SingleLineOf(text)).c_str());
}

std::intptr_t Win32Control::Send(unsigned message, std::uintptr_t first, std::intptr_t second) const {
    return SendMessageW(real_, message, first, second);
}

void Win32Control::Post(std::intptr_t what) const {
    PostMessageW(owner_.Real(), Win32Window::ControlMessage, reinterpret_cast<WPARAM>(real_), what);
}

} // namespace tarnwick
