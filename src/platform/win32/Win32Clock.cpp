#include "platform/win32/Win32Clock.h"

#include <windows.h>

namespace tarnwick {

std::int64_t Win32Clock::Now() { return static_cast<std::int64_t>(GetTickCount64()); }

} // namespace tarnwick
