#include "platform/win32/Win32Text.h"

#include <windows.h>

#include <algorithm>

namespace tarnwick {

namespace {

// False when the text is not wholly of the code page; `wide` then stays as it is.
bool Convert(std::string_view text, UINT codePage, DWORD flags, std::wstring& wide) {
    if (text.empty()) {
        wide.clear();
        return true;
    }
    const int size = static_cast<int>(text.size());
    const int length = MultiByteToWideChar(codePage, flags, text.data(), size, nullptr, 0);
    if (length == 0)
        return false;
    wide.resize(static_cast<std::size_t>(length));
    MultiByteToWideChar(codePage, flags, text.data(), size, wide.data(), length);
    return true;
}

bool IsControl(wchar_t c) { return c < L' ' || (c >= 0x7F && c < 0xA0) || c == 0x2028 || c == 0x2029; }

bool IsAscii(std::string_view text) {
    return std::ranges::all_of(text, [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

std::string UpperAscii(std::string_view text) {
    std::string upper(text);
    for (char& c : upper)
        if (c >= 'a' && c <= 'z')
            c = static_cast<char>(c - 'a' + 'A');
    return upper;
}

} // namespace

std::wstring WideOf(std::string_view text) {
    std::wstring wide;
    Convert(text, CP_ACP, 0, wide);
    return wide;
}

std::string NarrowOf(std::wstring_view text) {
    if (text.empty())
        return {};
    // No letter is swapped for one that only looks alike: the text could then name another file.
    const DWORD flags = GetACP() == CP_UTF8 ? 0 : WC_NO_BEST_FIT_CHARS;
    const int length = static_cast<int>(text.size());
    const int size = WideCharToMultiByte(CP_ACP, flags, text.data(), length, nullptr, 0, nullptr, nullptr);
    std::string narrow(static_cast<std::size_t>(size), '\0');
    WideCharToMultiByte(CP_ACP, flags, text.data(), length, narrow.data(), size, nullptr, nullptr);
    return narrow;
}

std::wstring LinesOf(std::string_view text) {
    std::wstring shown;
    if (!Convert(text, CP_UTF8, MB_ERR_INVALID_CHARS, shown))
        shown = WideOf(text);
    for (std::size_t at = 0; at < shown.size(); ++at) {
        if (shown[at] == L'\r' && at + 1 < shown.size() && shown[at + 1] == L'\n')
            ++at;
        else if (IsControl(shown[at]))
            shown[at] = L' ';
    }
    return shown;
}

std::wstring SingleLineOf(std::string_view text) {
    std::wstring line = LinesOf(text);
    std::erase(line, L'\r');
    std::ranges::replace(line, L'\n', L' ');
    return line;
}

std::wstring LiteralCaption(std::string_view text) {
    std::wstring caption = SingleLineOf(text);
    for (std::size_t at = caption.find(L'&'); at != std::wstring::npos; at = caption.find(L'&', at + 2))
        caption.insert(at, 1, L'&');
    return caption;
}

std::string Win32Text::Upper(std::string_view text) {
    std::wstring wide;
    if (IsAscii(text) || !Convert(text, CP_ACP, MB_ERR_INVALID_CHARS, wide))
        return UpperAscii(text);
    CharUpperBuffW(wide.data(), static_cast<DWORD>(wide.size()));
    return NarrowOf(wide);
}

} // namespace tarnwick
