#pragma once

#include "platform/win32/Win32Handles.h"

#include <string>

struct tagRECT;

namespace tarnwick {

// The tool tips of one window.
class Win32ToolTips {
public:
    // The tip of a control, whose place lets the mouse through to `window`.
    void Show(HWND__* window, HWND__* control, const std::string& text);
    // The whole text of a label that cuts it: the mouse passes through it to `parent`. The empty text takes it away.
    void ShowWhole(HWND__* parent, HWND__* label, const std::string& text);
    // The tip of a part of a control, one for each control; the empty text takes it away.
    void ShowPart(HWND__* control, const tagRECT& part, const std::string& text);

private:
    void Set(HWND__* window, std::uintptr_t number, const tagRECT& place, const std::string& text);

    HWND__* real_ = nullptr; // destroyed with the window that owns it
};

} // namespace tarnwick
