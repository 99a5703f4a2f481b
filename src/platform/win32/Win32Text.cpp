#include "platform/win32/Win32Text.h"

#include "text/Ascii.h"
#include "text/Text.h"

#include <windows.h>

#include <algorithm>

namespace tarnwick {

namespace {

// False when the text is not wholly UTF-8; `wide` then stays as it is.
bool Convert(std::string_view text, DWORD flags, std::wstring& wide) {
    if (text.empty()) {
        wide.clear();
        return true;
    }
    const int size = static_cast<int>(text.size());
    const int length = MultiByteToWideChar(CP_UTF8, flags, text.data(), size, nullptr, 0);
    if (length == 0)
        return false;
    wide.resize(static_cast<std::size_t>(length));
    MultiByteToWideChar(CP_UTF8, flags, text.data(), size, wide.data(), length);
    return true;
}

} // namespace

std::wstring WideOf(std::string_view text) {
    std::wstring wide;
    Convert(text, 0, wide);
    return wide;
}

std::string Utf8Of(std::wstring_view text) {
    if (text.empty())
        return {};
    const int length = static_cast<int>(text.size());
    const int size = WideCharToMultiByte(CP_UTF8, 0, text.data(), length, nullptr, 0, nullptr, nullptr);
    std::string narrow(static_cast<std::size_t>(size), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text.data(), length, narrow.data(), size, nullptr, nullptr);
    return narrow;
}

std::wstring LinesOf(std::string_view text) { return WideOf(ShownLines(text)); }

std::wstring SingleLineOf(std::string_view text) { return WideOf(ShownLine(text)); }

std::wstring LiteralCaption(std::string_view text) {
    std::wstring caption = SingleLineOf(text);
    for (std::size_t at = caption.find(L'&'); at != std::wstring::npos; at = caption.find(L'&', at + 2))
        caption.insert(at, 1, L'&');
    return caption;
}

std::string Win32Text::Upper(std::string_view text) {
    std::wstring wide;
    if (IsAscii(text) || !Convert(text, MB_ERR_INVALID_CHARS, wide))
        return AsciiUpper(text);
    CharUpperBuffW(wide.data(), static_cast<DWORD>(wide.size()));
    return Utf8Of(wide);
}

} // namespace tarnwick
