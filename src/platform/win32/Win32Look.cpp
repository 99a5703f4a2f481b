#include "platform/win32/Win32Look.h"

#include "platform/win32/Win32Text.h"

#include <windows.h>

#include <olectl.h>
#include <shlwapi.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <tuple>

namespace tarnwick {

namespace {

constexpr int TwipsPerInch = 1440;
constexpr int PointsPerInch = 72;

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

// Web Content Accessibility Guidelines 2.1, relative luminance and contrast ratio.
double Luminance(COLORREF color) {
    const auto part = [](BYTE value) {
        const double share = value / 255.0;
        return share <= 0.04045 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * part(GetRValue(color)) + 0.7152 * part(GetGValue(color)) + 0.0722 * part(GetBValue(color));
}

double Contrast(COLORREF one, COLORREF other) {
    const double light = std::max(Luminance(one), Luminance(other));
    const double dark = std::min(Luminance(one), Luminance(other));
    return (light + 0.05) / (dark + 0.05);
}

} // namespace

int DpiOf(HWND__* window) { return static_cast<int>(GetDpiForWindow(window)); }

int PixelsOf(int twips, int dpi) { return MulDiv(twips, dpi, TwipsPerInch); }

int ScaledPixels(int pixelsAt96, int dpi) { return MulDiv(pixelsAt96, dpi, USER_DEFAULT_SCREEN_DPI); }

HFONT__* FontOf(const Font& font, int dpi) {
    static std::map<std::tuple<int, bool, bool>, HFONT> fonts;
    const int height = -static_cast<int>(std::lround(font.Points * dpi / PointsPerInch));
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

std::uint32_t ReadableOn(std::uint32_t back, std::uint32_t text) {
    constexpr double enough = 4.5;
    HIGHCONTRASTW scheme = {};
    scheme.cbSize = sizeof scheme;
    if (SystemParametersInfoW(SPI_GETHIGHCONTRAST, sizeof scheme, &scheme, 0) == FALSE ||
        (scheme.dwFlags & HCF_HIGHCONTRASTON) == 0 || Contrast(back, text) >= enough)
        return text;
    constexpr COLORREF black = RGB(0, 0, 0);
    constexpr COLORREF white = RGB(255, 255, 255);
    return Contrast(back, black) > Contrast(back, white) ? black : white;
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

void SetIcon(HWND__* window, const std::string& name, int dpi) {
    // Kept for the whole process, as they are few.
    static std::map<std::tuple<std::string, int>, HANDLE> icons;
    const std::wstring resource = ResourceName(name);
    const auto load = [&](int metric) -> HANDLE {
        if (name.empty())
            return nullptr;
        const int size = GetSystemMetricsForDpi(metric, static_cast<UINT>(dpi));
        HANDLE& icon = icons[{name, size}];
        if (icon == nullptr)
            icon = LoadImageW(GetModuleHandleW(nullptr), resource.c_str(), IMAGE_ICON, size, size, LR_DEFAULTCOLOR);
        return icon;
    };
    SendMessageW(window, WM_SETICON, ICON_BIG, reinterpret_cast<LPARAM>(load(SM_CXICON)));
    SendMessageW(window, WM_SETICON, ICON_SMALL, reinterpret_cast<LPARAM>(load(SM_CXSMICON)));
}

void GrowToWindow(int& width, int& height, HWND__* window, int dpi) {
    const auto style = static_cast<DWORD>(GetWindowLongW(window, GWL_STYLE));
    const auto extended = static_cast<DWORD>(GetWindowLongW(window, GWL_EXSTYLE));
    RECT area = {0, 0, width, height};
    AdjustWindowRectExForDpi(&area, style, FALSE, extended, static_cast<UINT>(dpi));
    width = area.right - area.left;
    height = area.bottom - area.top;
}

} // namespace tarnwick
