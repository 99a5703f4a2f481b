#include "platform/win32/Win32Look.h"

#include "platform/win32/Win32Text.h"

#include <windows.h>

#include <olectl.h>
#include <shlwapi.h>

#include <cmath>
#include <map>
#include <tuple>

namespace tarnwick {

namespace {

constexpr int TwipsPerInch = 1440;
constexpr int PointsPerInch = 72;

// A function that only newer systems have; nullptr elsewhere.
template <class Function> Function NewerUserFunction(const char* name) {
    return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"user32.dll"), name)));
}

int ScreenDots() {
    const HDC screen = GetDC(nullptr);
    const int dots = GetDeviceCaps(screen, LOGPIXELSX);
    ReleaseDC(nullptr, screen);
    return dots;
}

// A resource is called as its file, without the extension.
std::wstring ResourceName(const std::string& file) { return WideOf(file.substr(0, file.rfind('.'))); }

IPicture* LoadPictureResource(const std::string& name) {
    const HRSRC resource = FindResourceW(nullptr, ResourceName(name).c_str(), MAKEINTRESOURCEW(10)); // RT_RCDATA
    if (resource == nullptr)
        return nullptr;
    const DWORD size = SizeofResource(nullptr, resource);
    const void* bytes = LockResource(LoadResource(nullptr, resource));
    IStream* stream = SHCreateMemStream(static_cast<const BYTE*>(bytes), size);
    if (stream == nullptr)
        return nullptr;
    IPicture* picture = nullptr;
    const HRESULT result =
        OleLoadPicture(stream, static_cast<LONG>(size), FALSE, IID_IPicture, reinterpret_cast<void**>(&picture));
    stream->Release();
    return SUCCEEDED(result) ? picture : nullptr;
}

} // namespace

int DotsOf(HWND__* window) {
    using Function = UINT(WINAPI*)(HWND);
    static const auto dotsForWindow = NewerUserFunction<Function>("GetDpiForWindow");
    const int dots = dotsForWindow == nullptr ? 0 : static_cast<int>(dotsForWindow(window));
    return dots > 0 ? dots : ScreenDots();
}

int PixelsOf(int twips, int dots) { return MulDiv(twips, dots, TwipsPerInch); }

int ScaledPixels(int pixelsAt96, int dots) { return MulDiv(pixelsAt96, dots, USER_DEFAULT_SCREEN_DPI); }

HFONT__* FontOf(const Font& font, int dots) {
    static std::map<std::tuple<int, bool, bool>, HFONT> fonts;
    const int height = -static_cast<int>(std::lround(font.Points * dots / PointsPerInch));
    HFONT& made = fonts[{height, font.Bold, font.Underline}];
    if (made == nullptr)
        made =
            CreateFontW(height, 0, 0, 0, font.Bold ? FW_BOLD : FW_NORMAL, FALSE, font.Underline, FALSE, DEFAULT_CHARSET,
                        OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS, DEFAULT_QUALITY, DEFAULT_PITCH | FF_SWISS, L"Verdana");
    return made;
}

std::uint32_t ColorValue(const Color& color, ColorRole fallback) {
    const bool own = color.Role != ColorRole::ControlDefault && color.Role != ColorRole::Transparent;
    switch (own ? color.Role : fallback) {
    case ColorRole::Fixed:
        return RGB(color.Red, color.Green, color.Blue);
    case ColorRole::WindowBackground:
        return GetSysColor(COLOR_WINDOW);
    case ColorRole::ButtonText:
        return GetSysColor(COLOR_BTNTEXT);
    case ColorRole::ButtonShadow:
        return GetSysColor(COLOR_BTNSHADOW);
    case ColorRole::ButtonHighlight:
        return GetSysColor(COLOR_BTNHIGHLIGHT);
    case ColorRole::HighlightText:
        return GetSysColor(COLOR_HIGHLIGHTTEXT);
    default:
        return GetSysColor(COLOR_BTNFACE);
    }
}

HBRUSH__* BrushOf(std::uint32_t color) {
    static std::map<std::uint32_t, HBRUSH> brushes;
    HBRUSH& made = brushes[color];
    if (made == nullptr)
        made = CreateSolidBrush(color);
    return made;
}

HBITMAP__* PictureOf(const std::string& name, int width, int height) {
    IPicture* picture = name.empty() ? nullptr : LoadPictureResource(name);
    if (picture == nullptr)
        return nullptr;
    OLE_XSIZE_HIMETRIC fullWidth = 0;
    OLE_YSIZE_HIMETRIC fullHeight = 0;
    picture->get_Width(&fullWidth);
    picture->get_Height(&fullHeight);

    const HDC screen = GetDC(nullptr);
    const HDC surface = CreateCompatibleDC(screen);
    const HBITMAP bitmap = CreateCompatibleBitmap(screen, width, height);
    const HGDIOBJ former = SelectObject(surface, bitmap);
    SetStretchBltMode(surface, HALFTONE);
    // A picture counts its rows from the bottom.
    picture->Render(surface, 0, 0, width, height, 0, fullHeight, fullWidth, -fullHeight, nullptr);
    SelectObject(surface, former);
    DeleteDC(surface);
    ReleaseDC(nullptr, screen);
    picture->Release();
    return bitmap;
}

void SetIcon(HWND__* window, const std::string& name) {
    const std::wstring resource = ResourceName(name);
    const auto load = [&](int width, int height) {
        return name.empty() ? nullptr
                            : LoadImageW(GetModuleHandleW(nullptr), resource.c_str(), IMAGE_ICON,
                                         GetSystemMetrics(width), GetSystemMetrics(height), LR_SHARED);
    };
    SendMessageW(window, WM_SETICON, ICON_BIG, reinterpret_cast<LPARAM>(load(SM_CXICON, SM_CYICON)));
    SendMessageW(window, WM_SETICON, ICON_SMALL, reinterpret_cast<LPARAM>(load(SM_CXSMICON, SM_CYSMICON)));
}

void GrowToWindow(int& width, int& height, HWND__* window, int dots) {
    using Function = BOOL(WINAPI*)(RECT*, DWORD, BOOL, DWORD, UINT);
    static const auto adjustForDots = NewerUserFunction<Function>("AdjustWindowRectExForDpi");
    const auto style = static_cast<DWORD>(GetWindowLongW(window, GWL_STYLE));
    const auto extended = static_cast<DWORD>(GetWindowLongW(window, GWL_EXSTYLE));
    RECT area = {0, 0, width, height};
    if (adjustForDots != nullptr)
        adjustForDots(&area, style, FALSE, extended, static_cast<UINT>(dots));
    else
        AdjustWindowRectEx(&area, style, FALSE, extended);
    width = area.right - area.left;
    height = area.bottom - area.top;
}

} // namespace tarnwick
