#include "platform/win32/Win32Window.h"

#include "platform/win32/Win32Buttons.h"
#include "platform/win32/Win32Keyboard.h"
#include "platform/win32/Win32Look.h"
#include "platform/win32/Win32Text.h"
#include "window/Reach.h"

#include <windows.h>

#include <commctrl.h>
#include <windowsx.h>

#include <algorithm>

namespace tarnwick {

namespace {

constexpr const wchar_t* WindowClass = L"TarnwickWindow";

LRESULT CALLBACK WindowProcedureOf(HWND window, UINT message, WPARAM first, LPARAM second) {
    auto* own = reinterpret_cast<Win32Window*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    return own == nullptr ? DefWindowProcW(window, message, first, second) : own->OnMessage(message, first, second);
}

void RegisterWindowClass() {
    WNDCLASSEXW type = {};
    type.cbSize = sizeof type;
    type.lpfnWndProc = WindowProcedureOf;
    type.hInstance = GetModuleHandleW(nullptr);
    type.hCursor = LoadCursorW(nullptr, MAKEINTRESOURCEW(32512)); // IDC_ARROW
    type.lpszClassName = WindowClass;
    RegisterClassExW(&type); // fails harmlessly from the second window on
}

DWORD StyleOf(const Window& window) {
    switch (window.Border) {
    case FrameStyle::None:
        return WS_POPUP | WS_CLIPCHILDREN;
    case FrameStyle::FixedTool:
        return WS_OVERLAPPED | WS_CAPTION | WS_SYSMENU | WS_CLIPCHILDREN;
    case FrameStyle::FixedSingle:
        break;
    }
    return WS_OVERLAPPED | WS_CAPTION | WS_SYSMENU | WS_MINIMIZEBOX | WS_CLIPCHILDREN;
}

DWORD ExtendedStyleOf(const Window& window) {
    const bool small = window.Border != FrameStyle::FixedSingle || !window.InTaskBar;
    return WS_EX_CONTROLPARENT | (small ? DWORD{WS_EX_TOOLWINDOW} : 0U) |
           (window.InTaskBar ? DWORD{WS_EX_APPWINDOW} : 0U);
}

Win32Control* ControlOf(HWND window) {
    return window == nullptr ? nullptr : reinterpret_cast<Win32Control*>(GetWindowLongPtrW(window, GWLP_USERDATA));
}

} // namespace

Win32Window::Win32Window(Window& window, Win32Pump& pump) : model_(window), pump_(pump) {
    RegisterWindowClass();
    title_ = window.Title;
    real_ = CreateWindowExW(ExtendedStyleOf(window), WindowClass, SingleLineOf(title_).c_str(), StyleOf(window),
                            CW_USEDEFAULT, CW_USEDEFAULT, 0, 0, nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
    SetWindowLongPtrW(real_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
}

Win32Window::~Win32Window() {
    SetWindowLongPtrW(real_, GWLP_USERDATA, 0);
    DestroyWindow(real_);
}

Win32Control* Win32Window::Find(const Control* control) const {
    const auto found =
        std::ranges::find_if(controls_, [control](const auto& made) { return &made->Model() == control; });
    return found == controls_.end() ? nullptr : found->get();
}

Win32Control* Win32Window::Focused() const {
    const HWND focus = GetFocus();
    return focus != real_ && IsChild(real_, focus) ? ControlOf(focus) : nullptr;
}

void Win32Window::Build() {
    for (Control* control : model_.Controls) {
        const Win32Control* container = Find(control->Container);
        const int number = static_cast<int>(controls_.size()) + 1;
        if (auto made = Win32Control::Make(*this, *control, container == nullptr ? real_ : container->Real(), number))
            controls_.push_back(std::move(made));
    }
    dots_ = DotsOf(real_);
    Place();
    for (const auto& control : controls_)
        if (!control->Model().ToolTip.empty())
            AddToolTip(*control);
}

void Win32Window::Place() {
    int width = PixelsOf(model_.ClientWidth, dots_);
    int height = PixelsOf(model_.ClientHeight, dots_);
    GrowToWindow(width, height, real_, dots_);
    SetWindowPos(real_, nullptr, 0, 0, width, height, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    for (const auto& control : controls_)
        control->Place(dots_);
}

void Win32Window::Center(HWND__* owner) {
    MONITORINFO screen = {};
    screen.cbSize = sizeof screen;
    GetMonitorInfoW(MonitorFromWindow(owner == nullptr ? real_ : owner, MONITOR_DEFAULTTOPRIMARY), &screen);
    RECT own;
    GetWindowRect(real_, &own);
    SetWindowPos(real_, nullptr, (screen.rcWork.left + screen.rcWork.right - (own.right - own.left)) / 2,
                 (screen.rcWork.top + screen.rcWork.bottom - (own.bottom - own.top)) / 2, 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

// The tip belongs to the control's place in the window, as labels let the mouse through.
void Win32Window::AddToolTip(const Win32Control& control) {
    if (toolTips_ == nullptr)
        toolTips_ = CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr, WS_POPUP | TTS_NOPREFIX, CW_USEDEFAULT,
                                    CW_USEDEFAULT, 0, 0, real_, nullptr, GetModuleHandleW(nullptr), nullptr);
    std::wstring text = SingleLineOf(control.Model().ToolTip);
    TTTOOLINFOW tool = {};
    tool.cbSize = sizeof tool;
    tool.uFlags = TTF_SUBCLASS;
    tool.hwnd = real_;
    tool.uId = reinterpret_cast<UINT_PTR>(&control);
    GetClientRect(control.Real(), &tool.rect);
    MapWindowPoints(control.Real(), real_, reinterpret_cast<POINT*>(&tool.rect), 2);
    tool.lpszText = text.data();
    SendMessageW(toolTips_, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
}

void Win32Window::Show(HWND__* owner) {
    const bool first = controls_.empty();
    if (first)
        Build();
    if (owner != nullptr)
        SetWindowLongPtrW(real_, GWLP_HWNDPARENT, reinterpret_cast<LONG_PTR>(owner));
    Sync();
    if (first)
        Center(owner);
    shown_ = true;
    ShowWindow(real_, SW_SHOW);
    SetForegroundWindow(real_);
    SyncFocus();
}

void Win32Window::Hide() {
    shown_ = false;
    ShowWindow(real_, SW_HIDE);
}

void Win32Window::SetReachable(bool reachable) {
    if (reachable_ == reachable)
        return;
    reachable_ = reachable;
    EnableWindow(real_, reachable);
}

void Win32Window::Sync() {
    RememberFocus(); // a control that is taken away loses it
    SyncFrame();
    for (const auto& control : controls_)
        control->Sync();
    if (shown_)
        SyncFocus();
}

void Win32Window::SyncFrame() {
    if (title_ != model_.Title) {
        title_ = model_.Title;
        SetWindowTextW(real_, SingleLineOf(title_).c_str());
    }
    if (icon_ != model_.Icon) {
        icon_ = model_.Icon;
        SetIcon(real_, icon_);
    }
    if (!(backColor_ == model_.BackColor) || edge_ != model_.Edge) {
        backColor_ = model_.BackColor;
        edge_ = model_.Edge;
        InvalidateRect(real_, nullptr, TRUE);
    }
    if (topMost_ != model_.TopMost) {
        topMost_ = model_.TopMost;
        SetWindowPos(real_, topMost_ ? HWND_TOPMOST : HWND_NOTOPMOST, 0, 0, 0, 0,
                     SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    }
}

// The focus goes where the program asks for it, and away from what the user can't reach any more.
void Win32Window::SyncFocus() {
    if (focusRevision_ != model_.FocusRevision) {
        focusRevision_ = model_.FocusRevision;
        if (Win32Control* wanted = Find(model_.FocusRequest))
            SetFocus(*wanted);
    }
    if (GetActiveWindow() == real_) {
        const Win32Control* focused = Focused();
        if (focused == nullptr || !CanHaveFocus(*this, focused->Model()))
            if (Win32Control* next = NextStop(*this, lastFocus_, false))
                SetFocus(*next);
    }
    ShowDefaultButton();
}

void Win32Window::SetFocus(Win32Control& control) {
    lastFocus_ = &control.Model();
    if (GetActiveWindow() == real_)
        ::SetFocus(control.Real());
}

void Win32Window::RememberFocus() {
    if (const Win32Control* focused = Focused())
        lastFocus_ = &focused->Model();
}

void Win32Window::ShowDefaultButton() {
    const Win32Control* focused = Focused();
    const bool onButton = focused != nullptr && focused->Model().Kind == ControlKind::CommandButton;
    for (const auto& control : controls_) {
        if (control->Model().Kind != ControlKind::CommandButton)
            continue;
        const auto& model = static_cast<const CommandButton&>(control->Model());
        static_cast<Win32CommandButton&>(*control).ShowDefault(onButton ? control.get() == focused : model.Default);
    }
}

void Win32Window::OnActivation(bool active) {
    if (!active) {
        RememberFocus();
        return;
    }
    Win32Control* target = Find(lastFocus_);
    if (target == nullptr || !CanHaveFocus(*this, target->Model()))
        target = NextStop(*this, nullptr, false);
    if (target != nullptr)
        ::SetFocus(target->Real());
}

// A window without a frame has no close box, and nothing else closes it.
void Win32Window::OnClose() {
    if (reachable_ && shown_ && model_.Border != FrameStyle::None)
        pump_.Handle([this] {
            const std::shared_ptr<Window> keep = model_.shared_from_this();
            keep->Unload();
        });
}

bool Win32Window::Filter(const tagMSG& message) {
    if (!reachable_ || !shown_)
        return false;
    // Input that was on its way to a control when the model took it away.
    const bool isButton = message.message > WM_MOUSEMOVE && message.message <= WM_MOUSELAST;
    const bool isKey = message.message >= WM_KEYFIRST && message.message <= WM_KEYLAST;
    const auto target = std::ranges::find(controls_, message.hwnd, &Win32Control::Real);
    if ((isButton || isKey) && target != controls_.end() && !tarnwick::IsReachable(model_, (*target)->Model()))
        return true;
    if (isKey)
        return HandleKey(*this, message);
    if (message.message == WM_MOUSEMOVE || message.message == WM_LBUTTONDOWN || message.message == WM_LBUTTONUP)
        OnMouse(message);
    return false;
}

// Labels get their clicks and every control its mouse moves from here, as many let the mouse through to the window.
void Win32Window::OnMouse(const tagMSG& message) {
    POINT place = {GET_X_LPARAM(message.lParam), GET_Y_LPARAM(message.lParam)};
    MapWindowPoints(message.hwnd, real_, &place, 1);
    RECT area;
    GetClientRect(real_, &area);
    if (!PtInRect(&area, place))
        return;
    Control* control = ControlAt(model_, MulDiv(place.x, 1440, dots_), MulDiv(place.y, 1440, dots_));
    if (message.message == WM_MOUSEMOVE) {
        if (const auto& handler = control == nullptr ? model_.MouseMove : control->MouseMove)
            Raise(handler);
    } else if (message.message == WM_LBUTTONDOWN) {
        pressed_ = control;
    } else if (control != nullptr && control == pressed_ && control->Kind == ControlKind::Label && control->Enabled) {
        Raise(control->Click);
    }
}

void Win32Window::Paint() {
    PAINTSTRUCT paint;
    const HDC surface = BeginPaint(real_, &paint);
    RECT area;
    GetClientRect(real_, &area);
    FillRect(surface, &area, BrushOf(ColorValue(model_.BackColor, ColorRole::ButtonFace)));
    if (model_.Edge != 0)
        DrawEdge(surface, &area, static_cast<UINT>(model_.Edge), BF_RECT);
    PaintOutlines(surface);
    EndPaint(real_, &paint);
}

void Win32Window::PaintOutlines(HDC__* surface) const {
    const int thickness = std::max(1, ScaledPixels(1, dots_));
    for (const Control* control : model_.Controls) {
        const bool isLine = control->Kind == ControlKind::Line;
        if ((!isLine && control->Kind != ControlKind::Shape) || !tarnwick::IsShown(model_, *control))
            continue;
        const Rect place = PlaceInWindow(*control);
        const HBRUSH brush = BrushOf(ColorValue(control->ForeColor, ColorRole::ButtonText));
        RECT side = {PixelsOf(place.Left, dots_), PixelsOf(place.Top, dots_), PixelsOf(place.Left + place.Width, dots_),
                     PixelsOf(place.Top + place.Height, dots_)};
        if (isLine) {
            side.bottom = std::max<LONG>(side.bottom, side.top + thickness);
            FillRect(surface, &side, brush);
            continue;
        }
        for (int i = 0; i < thickness; ++i, InflateRect(&side, -1, -1))
            FrameRect(surface, &side, brush);
    }
}

std::intptr_t Win32Window::OnMessage(unsigned message, std::uintptr_t first, std::intptr_t second) {
    switch (message) {
    case WM_COMMAND:
        if (Win32Control* control = ControlOf(reinterpret_cast<HWND>(second)))
            control->OnCommand(HIWORD(first));
        return 0;
    case WM_NOTIFY: {
        auto& notice = *reinterpret_cast<NMHDR*>(second);
        const auto made = std::ranges::find(controls_, notice.hwndFrom, &Win32Control::Real);
        if (made != controls_.end())
            (*made)->OnNotify(notice);
        return 0;
    }
    case ControlMessage:
        if (Win32Control* control = ControlOf(reinterpret_cast<HWND>(first)))
            control->OnPosted(second);
        return 0;
    case WM_CTLCOLORSTATIC:
    case WM_CTLCOLORBTN:
    case WM_CTLCOLOREDIT:
        if (const Win32Control* control = ControlOf(reinterpret_cast<HWND>(second)))
            return reinterpret_cast<LRESULT>(control->PrepareColors(reinterpret_cast<HDC>(first)));
        break;
    case WM_ERASEBKGND:
        return TRUE;
    case WM_PAINT:
        Paint();
        return 0;
    case WM_ACTIVATE:
        OnActivation(LOWORD(first) != WA_INACTIVE && HIWORD(first) == 0);
        return 0;
    case WM_SETFOCUS:
        OnActivation(true);
        return 0;
    case WM_CLOSE:
        OnClose();
        return 0;
    case WM_DPICHANGED: {
        dots_ = LOWORD(first);
        const RECT& place = *reinterpret_cast<const RECT*>(second);
        SetWindowPos(real_, nullptr, place.left, place.top, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
        Place();
        InvalidateRect(real_, nullptr, TRUE);
        return 0;
    }
    default:
        break;
    }
    return DefWindowProcW(real_, message, first, second);
}

} // namespace tarnwick
