#include "platform/win32/Win32Shell.h"

#include "platform/win32/Win32Handles.h"

#include <windows.h>

#include <shellapi.h>

#include <algorithm>

namespace tarnwick {

namespace {

bool IsLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }
bool IsSchemeCharacter(char c) { return IsLetter(c) || (c >= '0' && c <= '9') || c == '+' || c == '-' || c == '.'; }
bool IsControl(char c) { return static_cast<unsigned char>(c) < 0x20 || c == '\x7F'; }

// Schemes that lead to files, settings and tools of this machine, or run a script.
bool IsLocal(std::string_view scheme) {
    constexpr std::string_view local[] = {"file", "shell", "search",     "search-ms", "res",
                                          "mk",   "hcp",   "javascript", "vbscript",  "data"};
    return scheme.starts_with("ms-") || std::ranges::find(local, scheme) != std::end(local);
}

std::string ProgramFolder() {
    char path[MAX_PATH] = {};
    const DWORD length = GetModuleFileNameA(nullptr, path, MAX_PATH);
    const std::string text(path, length);
    return text.substr(0, text.rfind('\\'));
}

} // namespace

bool IsOpenableUrl(std::string_view text) {
    const std::size_t colon = text.find(':');
    if (colon == std::string_view::npos || colon < 2 || colon + 1 == text.size())
        return false;
    std::string scheme(text.substr(0, colon));
    if (!IsLetter(scheme.front()) || !std::ranges::all_of(scheme, IsSchemeCharacter) ||
        std::ranges::any_of(text, IsControl))
        return false;
    for (char& c : scheme)
        if (c >= 'A' && c <= 'Z')
            c = static_cast<char>(c - 'A' + 'a');
    return !IsLocal(scheme);
}

std::string AsOneArgument(std::string_view url) {
    std::string argument;
    for (const char c : url) {
        if (c == '"')
            argument += "%22";
        else if (c == ' ')
            argument += "%20";
        else
            argument += c;
    }
    return argument;
}

void Win32Shell::OpenUrl(WindowHandle owner, const std::string& url) {
    if (IsOpenableUrl(url))
        ShellExecuteA(WindowOf(owner), nullptr, AsOneArgument(url).c_str(), nullptr, ProgramFolder().c_str(),
                      SW_SHOWNORMAL);
}

} // namespace tarnwick
