#include "platform/win32/Win32Window.h"

#include "platform/win32/Win32Accessible.h"
#include "platform/win32/Win32Buttons.h"
#include "platform/win32/Win32Keyboard.h"
#include "platform/win32/Win32Look.h"
#include "platform/win32/Win32Painting.h"
#include "platform/win32/Win32Text.h"
#include "window/Reach.h"

#include <windows.h>

#include <commctrl.h>
#include <windowsx.h>

#include <algorithm>

namespace tarnwick {

namespace {

constexpr const wchar_t* WindowClass = L"TarnwickWindow";
constexpr UINT ScaledSizeMessage = 0x02E4; // WM_GETDPISCALEDSIZE, which not every set of headers defines

LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM first, LPARAM second) {
    auto* own = reinterpret_cast<Win32Window*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    return own == nullptr ? DefWindowProcW(window, message, first, second) : own->OnMessage(message, first, second);
}

void RegisterWindowClass() {
    WNDCLASSEXW type = {};
    type.cbSize = sizeof type;
    type.lpfnWndProc = Procedure;
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

bool IsMouseButton(UINT message) { return message > WM_MOUSEMOVE && message <= WM_MOUSELAST; }
bool IsKey(UINT message) { return message >= WM_KEYFIRST && message <= WM_KEYLAST; }

} // namespace

Win32Window::Win32Window(Window& window, Win32Pump& pump)
    : model_(window), input_(std::make_shared<Input>(window)), pump_(pump) {
    RegisterWindowClass();
    real_ = CreateWindowExW(ExtendedStyleOf(window), WindowClass, nullptr, StyleOf(window), CW_USEDEFAULT,
                            CW_USEDEFAULT, 0, 0, nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
    SetWindowLongPtrW(real_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
}

Win32Window::~Win32Window() {
    for (const auto& control : controls_)
        ForgetAccessible(control->Real());
    SetWindowLongPtrW(real_, GWLP_USERDATA, 0);
    DestroyWindow(real_);
}

Win32Control* Win32Window::Find(const Control* control) const {
    const auto found =
        std::ranges::find_if(controls_, [control](const auto& made) { return &made->Model() == control; });
    return found == controls_.end() ? nullptr : found->get();
}

// Any program can send a message that names any window.
Win32Control* Win32Window::ControlOf(HWND__* window) const {
    for (; window != nullptr && window != real_; window = GetAncestor(window, GA_PARENT))
        if (const auto found = std::ranges::find(controls_, window, &Win32Control::Real); found != controls_.end())
            return found->get();
    return nullptr;
}

void Win32Window::Build() {
    for (Control* control : model_.Controls) {
        const Win32Control* container = Find(control->Container);
        const int number = static_cast<int>(controls_.size()) + 1;
        if (auto made = Win32Control::Make(*this, *control, container == nullptr ? real_ : container->Real(), number))
            controls_.push_back(std::move(made));
    }
    // Screen readers go through the windows from the front to the back.
    const std::vector<const Control*> order = FrontToBack(model_);
    for (auto control = order.rbegin(); control != order.rend(); ++control)
        if (const Win32Control* made = Find(*control))
            SetWindowPos(made->Real(), HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    dpi_ = DpiOf(real_);
    Place();
}

std::pair<int, int> Win32Window::SizeAt(int dpi) const {
    int width = PixelsOf(model_.ClientWidth, dpi);
    int height = PixelsOf(model_.ClientHeight, dpi);
    GrowToWindow(width, height, real_, dpi);
    return {width, height};
}

void Win32Window::Place() {
    const auto [width, height] = SizeAt(dpi_);
    SetWindowPos(real_, nullptr, 0, 0, width, height, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    for (const auto& control : controls_) {
        control->Place(dpi_);
        if (const std::string& tip = *control->Model().ToolTip; !tip.empty())
            toolTips_.Show(real_, control->Real(), tip);
    }
    SetIcon(real_, model_.Icon, dpi_);
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

void Win32Window::SetEnabled(bool enabled) {
    if (enabled_.Differs(enabled))
        EnableWindow(real_, enabled);
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
    if (title_.Differs(model_.Title))
        SetWindowTextW(real_, SingleLineOf(model_.Title).c_str());
    if (icon_.Differs(model_.Icon))
        SetIcon(real_, model_.Icon, dpi_);
    if (ground_.Differs({model_.BackColor, model_.Edge}))
        InvalidateRect(real_, nullptr, TRUE);
    if (topMost_.Differs(model_.TopMost))
        SetWindowPos(real_, model_.TopMost ? HWND_TOPMOST : HWND_NOTOPMOST, 0, 0, 0, 0,
                     SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
}

const Control* Win32Window::Focused() const {
    const Win32Control* control = ControlOf(GetFocus());
    return control == nullptr ? nullptr : &control->Model();
}

// The focus moves where the program asks for it, and away from what the user can't reach any more.
void Win32Window::SyncFocus() {
    if (focusRequest_.Differs(model_.FocusRevision))
        lastFocus_ = model_.FocusRequest;
    if (Control* wanted = FocusAfter(model_, lastFocus_); wanted != nullptr && wanted != Focused())
        SetFocus(*wanted);
    ShowDefaultButton();
}

void Win32Window::SetFocus(Control& control) {
    lastFocus_ = &control;
    if (const Win32Control* made = Find(&control); made != nullptr && GetActiveWindow() == real_)
        ::SetFocus(made->Real());
}

void Win32Window::RememberFocus() {
    if (const Control* focused = Focused())
        lastFocus_ = focused;
}

void Win32Window::ShowDefaultButton() {
    const CommandButton* pressed = DefaultButton(model_, Focused());
    for (const auto& control : controls_)
        if (control->Model().Kind == ControlKind::CommandButton)
            static_cast<Win32CommandButton&>(*control).ShowDefault(&control->Model() == pressed);
}

void Win32Window::OnActivation(bool active) {
    if (!active)
        RememberFocus();
    else if (Control* target = FocusAfter(model_, lastFocus_))
        SetFocus(*target);
}

// Input that was on its way when the model took its window or its control away reaches nothing.
bool Win32Window::Filter(const tagMSG& message) {
    const Win32Control* target = ControlOf(message.hwnd);
    if ((IsMouseButton(message.message) || IsKey(message.message)) &&
        (!model_.TakesInput() || (target != nullptr && !IsReachable(model_, target->Model()))))
        return true;
    if (IsKey(message.message))
        return OnKey(message);
    if (message.message == WM_MOUSEMOVE || message.message == WM_LBUTTONDOWN || message.message == WM_LBUTTONUP)
        OnMouse(message);
    return false;
}

bool Win32Window::OnKey(const tagMSG& message) {
    const std::optional<KeyPress> key = KeyPressOf(message);
    const KeyEffect effect = key ? EffectOf(*key, model_, Focused()) : KeyEffect{};
    if (effect.Focus != nullptr) {
        SendMessageW(real_, WM_CHANGEUISTATE, MAKEWPARAM(UIS_CLEAR, UISF_HIDEFOCUS), 0); // from the first key on
        SetFocus(*effect.Focus);
        if (effect.Focus->Kind == ControlKind::TextBox)
            SendMessageW(Find(effect.Focus)->Real(), EM_SETSEL, 0, -1);
    }
    if (effect.Press != nullptr)
        Pass([&control = *effect.Press, shown = Find(effect.Press)->SeenCaption()](Input& input) {
            input.PressAndClick(control, shown);
        });
    if (effect.OpenMenu != nullptr)
        Find(effect.OpenMenu)->OpenMenu();
    return effect.Handled;
}

// Labels get their clicks and every control its mouse moves from here, as many let the mouse through to the window.
void Win32Window::OnMouse(const tagMSG& message) {
    POINT place = {GET_X_LPARAM(message.lParam), GET_Y_LPARAM(message.lParam)};
    MapWindowPoints(message.hwnd, real_, &place, 1);
    const int x = MulDiv(place.x, 1440, dpi_);
    const int y = MulDiv(place.y, 1440, dpi_);
    Control* control = ControlAt(model_, x, y);
    const bool onLabel = control != nullptr && control->Kind == ControlKind::Label;
    if (message.message == WM_MOUSEMOVE)
        Pass([x, y](Input& input) { input.MoveMouse(x, y); });
    else if (message.message == WM_LBUTTONDOWN && onLabel)
        Pass([control](Input& input) { input.Press(*control, control->Caption); });
    else if (message.message == WM_LBUTTONDOWN)
        input_->Release(nullptr);
    else if (onLabel)
        Pass([control](Input& input) { input.Release(control); });
}

// The common controls learn of new colours from their window.
void Win32Window::OnNewColors(unsigned message, std::uintptr_t first, std::intptr_t second) {
    for (const auto& control : controls_) {
        if (message == WM_SYSCOLORCHANGE)
            SendMessageW(control->Real(), message, first, second);
        control->ShowColors();
    }
    RedrawWindow(real_, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
}

void Win32Window::OnNewScale(int dpi, long left, long top) {
    dpi_ = dpi;
    SetWindowPos(real_, nullptr, left, top, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    Place();
    RedrawWindow(real_, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
}

std::intptr_t Win32Window::OnMessage(unsigned message, std::uintptr_t first, std::intptr_t second) {
    switch (message) {
    case WM_COMMAND:
        if (Win32Control* control = ControlOf(reinterpret_cast<HWND>(second)))
            control->OnCommand(HIWORD(first));
        return 0;
    case WM_NOTIFY: {
        auto& notice = *reinterpret_cast<NMHDR*>(second);
        Win32Control* control = ControlOf(notice.hwndFrom);
        return control != nullptr && control->Real() == notice.hwndFrom ? control->OnNotify(notice) : 0;
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
    // Themed controls have their window paint their ground.
    case WM_ERASEBKGND:
    case WM_PRINTCLIENT:
        PaintGround(reinterpret_cast<HDC>(first), real_, model_, dpi_);
        return TRUE;
    case WM_SYSCOLORCHANGE:
    case WM_THEMECHANGED:
    case WM_SETTINGCHANGE:
        OnNewColors(message, first, second);
        break;
    case WM_ACTIVATE:
        OnActivation(LOWORD(first) != WA_INACTIVE && HIWORD(first) == 0);
        return 0;
    case WM_SETFOCUS:
        OnActivation(true);
        return 0;
    // A tap on Alt or F10 asks for the menu bar, which no window has; the system would wait in a loop for the next key.
    case WM_SYSCOMMAND:
        if ((first & 0xFFF0U) == SC_KEYMENU && second == 0)
            return 0;
        break;
    case WM_CLOSE:
        Pass([](Input& input) { input.Close(); });
        return 0;
    case ScaledSizeMessage: {
        const auto [width, height] = SizeAt(static_cast<int>(first));
        *reinterpret_cast<SIZE*>(second) = {width, height};
        return TRUE;
    }
    case WM_DPICHANGED: {
        const auto& place = *reinterpret_cast<const RECT*>(second);
        OnNewScale(LOWORD(first), place.left, place.top);
        return 0;
    }
    default:
        break;
    }
    return DefWindowProcW(real_, message, first, second);
}

} // namespace tarnwick
