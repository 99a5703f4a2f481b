#include "platform/win32/Win32Shell.h"

#include "platform/win32/Win32Handles.h"
#include "platform/win32/Win32Text.h"

#include <windows.h>

#include <shellapi.h>

namespace tarnwick {

namespace {

constexpr std::size_t LongestUrl = 2083; // characters that the shell takes, the closing NUL included

std::string ProgramFolder() {
    char path[MAX_PATH] = {};
    const DWORD length = GetModuleFileNameA(nullptr, path, MAX_PATH);
    const std::string text(path, length);
    return text.substr(0, text.rfind('\\'));
}

} // namespace

// A longer one would open cut.
void Win32Shell::OpenUrl(WindowHandle owner, const std::string& url) {
    if (WideOf(url).size() < LongestUrl)
        ShellExecuteA(WindowOf(owner), nullptr, url.c_str(), nullptr, ProgramFolder().c_str(), SW_SHOWNORMAL);
}

} // namespace tarnwick
