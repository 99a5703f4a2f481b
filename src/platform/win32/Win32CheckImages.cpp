#include "platform/win32/Win32CheckImages.h"

#include "platform/win32/Win32Look.h"
#include "platform/win32/Win32System.h"

#include <windows.h>

#include <commctrl.h>

namespace tarnwick {

namespace {

// The check boxes of the theme that draws the desktop's controls, if one does.
class ThemedBoxes {
public:
    // Of no window: one would take the theme for its own.
    explicit ThemedBoxes(int dpi) {
        static const auto open = SystemFunction<HANDLE(WINAPI*)(HWND, LPCWSTR)>(L"uxtheme.dll", "OpenThemeData");
        static const auto openForDpi =
            SystemFunction<HANDLE(WINAPI*)(HWND, LPCWSTR, UINT)>(L"uxtheme.dll", "OpenThemeDataForDpi");
        if (openForDpi != nullptr)
            theme_ = openForDpi(nullptr, L"BUTTON", static_cast<UINT>(dpi));
        else if (open != nullptr)
            theme_ = open(nullptr, L"BUTTON");
    }
    ~ThemedBoxes() {
        static const auto close = SystemFunction<HRESULT(WINAPI*)(HANDLE)>(L"uxtheme.dll", "CloseThemeData");
        if (theme_ != nullptr)
            close(theme_);
    }
    ThemedBoxes(const ThemedBoxes&) = delete;
    ThemedBoxes& operator=(const ThemedBoxes&) = delete;

    bool Draw(HDC surface, const RECT& box, bool ticked) const {
        using Function = HRESULT(WINAPI*)(HANDLE, HDC, int, int, const RECT*, const RECT*);
        static const auto draw = SystemFunction<Function>(L"uxtheme.dll", "DrawThemeBackground");
        constexpr int checkBox = 3;       // BP_CHECKBOX
        const int state = ticked ? 5 : 1; // CBS_CHECKEDNORMAL, CBS_UNCHECKEDNORMAL
        return theme_ != nullptr && SUCCEEDED(draw(theme_, surface, checkBox, state, &box, nullptr));
    }

private:
    HANDLE theme_ = nullptr;
};

} // namespace

_IMAGELIST* MakeCheckImages(int dpi) {
    constexpr int count = 3;
    const int size = ScaledPixels(16, dpi);
    const int gap = size / 8;
    const HDC screen = GetDC(nullptr);
    const HDC surface = CreateCompatibleDC(screen);
    const HBITMAP bitmap = CreateCompatibleBitmap(screen, count * size, size);
    const HGDIOBJ former = SelectObject(surface, bitmap);
    const RECT ground = {0, 0, count * size, size};
    FillRect(surface, &ground, GetSysColorBrush(COLOR_WINDOW));
    const ThemedBoxes themed(dpi);
    for (const int image : {1, 2}) {
        RECT box = {image * size + gap, gap, (image + 1) * size - gap, size - gap};
        const bool ticked = image == 2;
        if (!themed.Draw(surface, box, ticked))
            DrawFrameControl(surface, &box, DFC_BUTTON,
                             DFCS_BUTTONCHECK | DFCS_FLAT | (ticked ? UINT{DFCS_CHECKED} : 0U));
    }
    SelectObject(surface, former);
    const HIMAGELIST images = ImageList_Create(size, size, ILC_COLOR24, count, 0);
    ImageList_Add(images, bitmap, nullptr);
    DeleteObject(bitmap);
    DeleteDC(surface);
    ReleaseDC(nullptr, screen);
    return images;
}

} // namespace tarnwick
