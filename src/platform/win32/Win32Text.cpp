#include "platform/win32/Win32Text.h"

#include "text/Ascii.h"
#include "text/Text.h"

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

std::string Convert(std::wstring_view text, UINT codePage, DWORD flags) {
    if (text.empty())
        return {};
    const int length = static_cast<int>(text.size());
    const int size = WideCharToMultiByte(codePage, flags, text.data(), length, nullptr, 0, nullptr, nullptr);
    std::string narrow(static_cast<std::size_t>(size), '\0');
    WideCharToMultiByte(codePage, flags, text.data(), length, narrow.data(), size, nullptr, nullptr);
    return narrow;
}

std::wstring FromUtf8(std::string_view text) {
    std::wstring wide;
    Convert(text, CP_UTF8, 0, wide);
    return wide;
}

std::string AsUtf8(std::string_view text) {
    std::wstring wide;
    return GetACP() == CP_UTF8 || Convert(text, CP_UTF8, MB_ERR_INVALID_CHARS, wide) ? std::string(text)
                                                                                     : Utf8Of(WideOf(text));
}

} // namespace

std::wstring WideOf(std::string_view text) {
    std::wstring wide;
    Convert(text, CP_ACP, 0, wide);
    return wide;
}

std::string NarrowOf(std::wstring_view text) {
    // No letter is swapped for one that only looks alike: the text could then name another file.
    return Convert(text, CP_ACP, GetACP() == CP_UTF8 ? 0 : WC_NO_BEST_FIT_CHARS);
}

std::string Utf8Of(std::wstring_view text) { return Convert(text, CP_UTF8, 0); }

std::wstring LinesOf(std::string_view text) { return FromUtf8(ShownLines(AsUtf8(text))); }

std::wstring SingleLineOf(std::string_view text) { return FromUtf8(ShownLine(AsUtf8(text))); }

std::wstring LiteralCaption(std::string_view text) {
    std::wstring caption = SingleLineOf(text);
    for (std::size_t at = caption.find(L'&'); at != std::wstring::npos; at = caption.find(L'&', at + 2))
        caption.insert(at, 1, L'&');
    return caption;
}

std::string Win32Text::Upper(std::string_view text) {
    std::wstring wide;
    if (IsAscii(text) || !Convert(text, CP_ACP, MB_ERR_INVALID_CHARS, wide))
        return AsciiUpper(text);
    CharUpperBuffW(wide.data(), static_cast<DWORD>(wide.size()));
    return NarrowOf(wide);
}

} // namespace tarnwick
