#include "platform/win32/Win32Statics.h"

#include "platform/win32/Win32Accessible.h"
#include "platform/win32/Win32Look.h"
#include "platform/win32/Win32Text.h"
#include "platform/win32/Win32Window.h"

#include <windows.h>

#include <commctrl.h>

namespace tarnwick {

namespace {

DWORD LabelStyle(const Label& label) {
    const DWORD alignment = label.Alignment == Alignment::Center ? SS_CENTER : SS_LEFT;
    return SS_NOPREFIX | alignment | (label.WordWrap ? 0U : SS_ENDELLIPSIS);
}

// The system's group box is a window over the others that paints no ground and lets clicks through. A frame paints its
// ground, keeps clicks, and hands on what its controls report.
LRESULT CALLBACK FrameProcedure(HWND window, UINT message, WPARAM first, LPARAM second, UINT_PTR /*number*/,
                                DWORD_PTR control) {
    switch (message) {
    case WM_COMMAND:
    case WM_NOTIFY:
    case WM_CTLCOLORBTN:
    case WM_CTLCOLOREDIT:
    case WM_CTLCOLORSTATIC:
        return SendMessageW(GetAncestor(window, GA_PARENT), message, first, second);
    case WM_NCHITTEST:
        return HTCLIENT;
    case WM_ERASEBKGND:
    case WM_PRINTCLIENT: {
        const auto surface = reinterpret_cast<HDC>(first);
        RECT area;
        GetClientRect(window, &area);
        FillRect(surface, &area, reinterpret_cast<Win32Control*>(control)->PrepareColors(surface));
        return TRUE;
    }
    default:
        return DefSubclassProc(window, message, first, second);
    }
}

} // namespace

Win32Label::Win32Label(Win32Window& owner, Label& model, HWND__* parent, int number)
    : Win32Control(owner, model, parent, number, {L"STATIC", LabelStyle(model)}), label_(model) {}

void Win32Label::SyncContent() {
    if (!lines_.Differs(label_.Caption))
        return;
    SetWindowTextW(Real(), (label_.WordWrap ? LinesOf(label_.Caption) : SingleLineOf(label_.Caption)).c_str());
    ShowWhole();
}

void Win32Label::ShowLast() {
    if (!IsWindowVisible(Real()) || !announced_.Differs(label_.AnnounceRevision))
        return;
    SetAnnouncing(Real());
    AnnounceText(Real());
}

// A text that is cut with dots is whole in a tool tip.
void Win32Label::ShowWhole() {
    if (label_.WordWrap || !label_.ToolTip->empty())
        return;
    RECT room;
    GetClientRect(Real(), &room);
    const HDC surface = GetDC(Real());
    const HGDIOBJ former = SelectObject(surface, reinterpret_cast<HFONT>(Send(WM_GETFONT)));
    const std::wstring text = SingleLineOf(label_.Caption);
    SIZE size = {};
    GetTextExtentPoint32W(surface, text.c_str(), static_cast<int>(text.size()), &size);
    SelectObject(surface, former);
    ReleaseDC(Real(), surface);
    Owner().ToolTips().ShowWhole(GetAncestor(Real(), GA_PARENT), Real(), size.cx > room.right ? label_.Caption : "");
}

bool Win32Label::IsEmpty() const { return label_.Caption.empty() && label_.BackColor.Role == ColorRole::Transparent; }

Win32Frame::Win32Frame(Win32Window& owner, Frame& model, HWND__* parent, int number)
    : Win32Control(owner, model, parent, number, {L"BUTTON", BS_GROUPBOX | WS_CLIPCHILDREN}) {
    SetWindowSubclass(Real(), FrameProcedure, 0, reinterpret_cast<DWORD_PTR>(static_cast<Win32Control*>(this)));
}

Win32Picture::Win32Picture(Win32Window& owner, PictureBox& model, HWND__* parent, int number)
    : Win32Control(owner, model, parent, number, {L"STATIC", SS_BITMAP | SS_CENTERIMAGE | WS_BORDER}), picture_(model) {
}

Win32Picture::~Win32Picture() {
    if (bitmap_ != nullptr)
        DeleteObject(bitmap_);
}

void Win32Picture::SyncContent() {
    if (shown_.Differs(picture_.Picture))
        Scale(0);
}

void Win32Picture::Scale(int /*dpi*/) {
    if (picture_.Picture.empty())
        return;
    RECT area;
    GetClientRect(Real(), &area);
    const HBITMAP bitmap = PictureOf(picture_.Picture, area.right, area.bottom);
    Send(STM_SETIMAGE, IMAGE_BITMAP, reinterpret_cast<LPARAM>(bitmap));
    if (bitmap_ != nullptr)
        DeleteObject(bitmap_);
    // A static control may show a copy of its own, which is then ours to delete.
    bitmap_ = reinterpret_cast<HBITMAP>(Send(STM_GETIMAGE, IMAGE_BITMAP));
    if (bitmap_ != bitmap)
        DeleteObject(bitmap);
}

} // namespace tarnwick
