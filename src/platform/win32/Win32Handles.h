#pragma once

// The system's handle types without the system's headers, and how the seam numbers windows.

#include "services/Services.h"

struct HWND__;
struct HFONT__;
struct HBITMAP__;
struct HDC__;
struct HBRUSH__;
struct _IMAGELIST;
struct tagMSG;

namespace tarnwick {

// The system's window handles have 32 significant bits on 64-bit Windows too.
inline WindowHandle HandleOf(HWND__* window) {
    return static_cast<WindowHandle>(reinterpret_cast<std::intptr_t>(window));
}

inline HWND__* WindowOf(WindowHandle handle) { return reinterpret_cast<HWND__*>(std::intptr_t{handle}); }

} // namespace tarnwick
