#include "platform/win32/Win32Keyboard.h"

#include "platform/win32/Win32Text.h"

#include <windows.h>

namespace tarnwick {

namespace {

bool IsDown(int key) { return GetKeyState(key) < 0; }

std::optional<Key> KeyOf(const MSG& message) {
    if (message.message == WM_SYSCHAR)
        return Key::Letter;
    if (message.message == WM_SYSKEYDOWN && message.wParam == VK_F10 && IsDown(VK_SHIFT))
        return Key::Menu;
    if (message.message != WM_KEYDOWN || IsDown(VK_CONTROL))
        return std::nullopt;
    switch (message.wParam) {
    case VK_TAB:
        return Key::Tab;
    case VK_RETURN:
        return Key::Enter;
    case VK_SPACE:
        return Key::Space;
    case VK_LEFT:
        return Key::Left;
    case VK_UP:
        return Key::Up;
    case VK_RIGHT:
        return Key::Right;
    case VK_DOWN:
        return Key::Down;
    case VK_APPS:
        return Key::Menu;
    default:
        return std::nullopt;
    }
}

} // namespace

std::optional<KeyPress> KeyPressOf(const tagMSG& message) {
    const std::optional<Key> which = KeyOf(message);
    if (!which)
        return std::nullopt;
    KeyPress key;
    key.Which = *which;
    key.Shift = IsDown(VK_SHIFT);
    key.Repeated = (message.lParam & (LPARAM{1} << 30)) != 0;
    if (*which == Key::Letter) {
        key.Alt = true;
        key.Letter = Utf8Of(std::wstring(1, static_cast<wchar_t>(message.wParam)));
    }
    return key;
}

} // namespace tarnwick
