#include "platform/win32/Win32Keyboard.h"

#include "platform/win32/Win32Text.h"
#include "window/Reach.h"

#include <windows.h>

#include <algorithm>
#include <vector>

namespace tarnwick {

namespace {

bool IsDown(int key) { return GetKeyState(key) < 0; }

bool IsRepeat(const MSG& message) { return (message.lParam & (LPARAM{1} << 30)) != 0; }

std::vector<Control*> InTabOrder(const Window& window) {
    std::vector<Control*> stops;
    std::ranges::copy_if(window.Controls, std::back_inserter(stops), [](const Control* c) { return c->TabIndex >= 0; });
    std::ranges::stable_sort(stops, {}, &Control::TabIndex);
    return stops;
}

bool IsStop(const Win32Window& window, const Control& control) {
    const bool passed = control.Kind == ControlKind::OptionButton && !static_cast<const OptionButton&>(control).Value;
    return !passed && CanHaveFocus(window, control);
}

// Focus rectangles show from the first key on that moves the focus.
void ShowCues(const Win32Window& window, WORD what) {
    SendMessageW(window.Real(), WM_CHANGEUISTATE, MAKEWPARAM(UIS_CLEAR, what), 0);
}

bool Tab(Win32Window& window) {
    const Win32Control* focused = window.Focused();
    if (Win32Control* next = NextStop(window, focused == nullptr ? nullptr : &focused->Model(), IsDown(VK_SHIFT))) {
        ShowCues(window, UISF_HIDEFOCUS);
        window.SetFocus(*next);
        if (next->Model().Kind == ControlKind::TextBox)
            SendMessageW(next->Real(), EM_SETSEL, 0, -1);
    }
    return true;
}

// Held down, it presses once: the next state of a button is not what the user wanted to press.
bool Enter(Win32Window& window, const MSG& message) {
    Win32Control* button = window.Focused();
    if (button == nullptr || button->Model().Kind != ControlKind::CommandButton) {
        const auto isDefault = [](const Control* control) {
            return control->Kind == ControlKind::CommandButton && static_cast<const CommandButton*>(control)->Default;
        };
        const auto found = std::ranges::find_if(window.Model().Controls, isDefault);
        button = found == window.Model().Controls.end() ? nullptr : window.Find(*found);
    }
    if (button != nullptr && !IsRepeat(message) && CanHaveFocus(window, button->Model()))
        button->Press();
    return true;
}

bool Arrow(Win32Window& window, bool backwards) {
    const Win32Control* focused = window.Focused();
    if (focused == nullptr || focused->Model().Kind != ControlKind::OptionButton)
        return false;
    std::vector<Control*> group = InTabOrder(window.Model());
    std::erase_if(group, [&](const Control* control) {
        return control->Kind != ControlKind::OptionButton || !CanHaveFocus(window, *control);
    });
    const auto own = std::ranges::find(group, &focused->Model());
    if (own == group.end())
        return true;
    const auto count = static_cast<std::ptrdiff_t>(group.size());
    const std::ptrdiff_t next = (own - group.begin() + (backwards ? count - 1 : 1)) % count;
    Win32Control* target = window.Find(group[static_cast<std::size_t>(next)]);
    ShowCues(window, UISF_HIDEFOCUS);
    window.SetFocus(*target);
    target->Press();
    return true;
}

// The letter behind the first single "&", in upper case; 0: none.
wchar_t AccessKey(const Control& control) {
    if (control.Kind != ControlKind::CommandButton && control.Kind != ControlKind::CheckBox &&
        control.Kind != ControlKind::OptionButton)
        return 0;
    const std::wstring caption = SingleLineOf(control.Caption);
    for (std::size_t at = caption.find(L'&'); at != std::wstring::npos && at + 1 < caption.size();
         at = caption.find(L'&', at + 2))
        if (caption[at + 1] != L'&')
            return static_cast<wchar_t>(reinterpret_cast<std::uintptr_t>(
                CharUpperW(reinterpret_cast<wchar_t*>(static_cast<std::uintptr_t>(caption[at + 1])))));
    return 0;
}

bool PressAccessKey(Win32Window& window, const MSG& message) {
    const auto letter = static_cast<wchar_t>(
        reinterpret_cast<std::uintptr_t>(CharUpperW(reinterpret_cast<wchar_t*>(message.wParam & 0xFFFF))));
    for (const Control* control : window.Model().Controls) {
        if (letter == 0 || AccessKey(*control) != letter || !CanHaveFocus(window, *control))
            continue;
        Win32Control* target = window.Find(control);
        if (!IsRepeat(message)) {
            window.SetFocus(*target);
            target->Press();
        }
        return true;
    }
    return false;
}

bool OpenMenu(Win32Window& window) {
    Win32Control* focused = window.Focused();
    if (focused == nullptr || focused->Model().Kind != ControlKind::Grid)
        return false;
    focused->OpenMenuByKey();
    return true;
}

bool HandleKeyDown(Win32Window& window, const MSG& message) {
    switch (message.wParam) {
    case VK_TAB:
        return !IsDown(VK_CONTROL) && Tab(window);
    case VK_RETURN:
        return Enter(window, message);
    case VK_LEFT:
    case VK_UP:
        return Arrow(window, true);
    case VK_RIGHT:
    case VK_DOWN:
        return Arrow(window, false);
    case VK_APPS:
        return OpenMenu(window);
    default:
        return false;
    }
}

} // namespace

bool HandleKey(Win32Window& window, const tagMSG& message) {
    switch (message.message) {
    case WM_KEYDOWN:
        return HandleKeyDown(window, message);
    case WM_SYSKEYDOWN:
        return message.wParam == VK_F10 && IsDown(VK_SHIFT) && OpenMenu(window);
    case WM_SYSCHAR:
        return PressAccessKey(window, message);
    default:
        return false;
    }
}

bool CanHaveFocus(const Win32Window& window, const Control& control) {
    return control.TabIndex >= 0 && IsReachable(window.Model(), control);
}

Win32Control* NextStop(const Win32Window& window, const Control* from, bool backwards) {
    std::vector<Control*> stops = InTabOrder(window.Model());
    if (backwards)
        std::ranges::reverse(stops);
    const auto own = std::ranges::find(stops, from);
    if (own != stops.end())
        std::ranges::rotate(stops, own + 1);
    const auto next = std::ranges::find_if(stops, [&](const Control* control) { return IsStop(window, *control); });
    return next == stops.end() ? nullptr : window.Find(*next);
}

} // namespace tarnwick
