#include "platform/win32/Win32ToolTips.h"

#include "platform/win32/Win32Text.h"
#include "text/Text.h"

#include <windows.h>

#include <commctrl.h>

namespace tarnwick {

void Win32ToolTips::Show(HWND__* window, HWND__* control, const std::string& text) {
    RECT place;
    GetClientRect(control, &place);
    MapWindowPoints(control, window, reinterpret_cast<POINT*>(&place), 2);
    Set(window, reinterpret_cast<std::uintptr_t>(control), place, text);
}

void Win32ToolTips::ShowWhole(HWND__* parent, HWND__* label, const std::string& text) {
    if (text.empty() && real_ == nullptr)
        return;
    RECT place = {};
    if (!text.empty()) {
        GetClientRect(label, &place);
        MapWindowPoints(label, parent, reinterpret_cast<POINT*>(&place), 2);
    }
    Set(parent, reinterpret_cast<std::uintptr_t>(label), place, text);
}

void Win32ToolTips::ShowPart(HWND__* control, const tagRECT& part, const std::string& text) {
    Set(control, 1, text.empty() ? RECT{} : part, text);
}

void Win32ToolTips::Set(HWND__* window, std::uintptr_t number, const tagRECT& place, const std::string& text) {
    if (real_ == nullptr) {
        real_ = CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr, WS_POPUP | TTS_NOPREFIX, CW_USEDEFAULT,
                                CW_USEDEFAULT, 0, 0, GetAncestor(window, GA_ROOT), nullptr, GetModuleHandleW(nullptr),
                                nullptr);
        SendMessageW(real_, TTM_SETMAXTIPWIDTH, 0, GetSystemMetrics(SM_CXSCREEN)); // from here on it keeps line ends
    }
    std::wstring shown = LinesOf(ToolTipText(text));
    TTTOOLINFOW tool = {};
    tool.cbSize = sizeof tool;
    tool.hwnd = window;
    tool.uId = number;
    const bool known = SendMessageW(real_, TTM_GETTOOLINFOW, 0, reinterpret_cast<LPARAM>(&tool)) != FALSE;
    tool.uFlags = TTF_SUBCLASS;
    tool.rect = place;
    tool.lpszText = shown.data();
    SendMessageW(real_, known ? TTM_SETTOOLINFOW : TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
}

} // namespace tarnwick
