#include "platform/win32/Win32Windows.h"

#include "platform/win32/Win32Text.h"
#include "text/Text.h"
#include "window/Dialogs.h"

#include <windows.h>

#include <commctrl.h>

#include <algorithm>
#include <utility>

namespace tarnwick {

namespace {

UINT MessageFlags(MessageIcon icon, MessageButtons buttons) {
    const UINT shape = buttons == MessageButtons::YesNo ? MB_YESNO | MB_DEFBUTTON2 : MB_OK;
    switch (icon) {
    case MessageIcon::Critical:
        return shape | MB_ICONHAND;
    case MessageIcon::Question:
        return shape | MB_ICONQUESTION;
    case MessageIcon::Information:
        break;
    }
    return shape | MB_ICONASTERISK;
}

// Measures lines of boxes and menus, whose fonts differ in nothing but the scale.
LineSize SizeOf(const std::string& line, LOGFONTW NONCLIENTMETRICSW::*font) {
    NONCLIENTMETRICSW metrics = {};
    metrics.cbSize = sizeof metrics;
    SystemParametersInfoForDpi(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0, USER_DEFAULT_SCREEN_DPI);
    const HDC surface = CreateCompatibleDC(nullptr);
    const HFONT made = CreateFontIndirectW(&(metrics.*font));
    const HGDIOBJ former = SelectObject(surface, made);
    const std::wstring shown = SingleLineOf(line);
    SIZE size = {};
    GetTextExtentPoint32W(surface, shown.c_str(), static_cast<int>(shown.size()), &size);
    SelectObject(surface, former);
    DeleteObject(made);
    DeleteDC(surface);
    return {size.cx, size.cy};
}

HMENU MakeMenu(const Menu& menu) {
    const HMENU made = CreatePopupMenu();
    const auto widthOf = [](const std::string& text) { return SizeOf(text, &NONCLIENTMETRICSW::lfMenuFont).Width; };
    UINT_PTR number = 0;
    for (const MenuEntry* entry : menu.Entries) {
        ++number;
        if (entry->Separator)
            AppendMenuW(made, MF_SEPARATOR, 0, nullptr);
        else
            AppendMenuW(made, MF_STRING | (entry->Enabled ? MF_ENABLED : MF_GRAYED), number,
                        LiteralCaption(Elided(entry->Caption, WidestMenuCaption, widthOf)).c_str());
    }
    return made;
}

} // namespace

Win32Windows::Win32Windows(ClockService& clock)
    : loop_(clock), pump_(
                        loop_, clock, [this] { Sync(); }, [this](const tagMSG& message) { return Filter(message); }) {
    INITCOMMONCONTROLSEX controls = {sizeof controls, ICC_STANDARD_CLASSES | ICC_WIN95_CLASSES};
    InitCommonControlsEx(&controls);
}

void Win32Windows::Run() {
    while (pump_.WaitForEvents()) {
    }
}

Win32Window* Win32Windows::Find(const Window& window) const {
    const auto found = std::ranges::find_if(windows_, [&](const auto& real) { return &real->Model() == &window; });
    return found == windows_.end() ? nullptr : found->get();
}

WindowHandle Win32Windows::Open(Window& window) {
    loop_.Add(window);
    windows_.push_back(std::make_unique<Win32Window>(window, pump_));
    return HandleOf(windows_.back()->Real());
}

void Win32Windows::Show(Window&) { pump_.Changed(); }

void Win32Windows::Hide(Window&) { pump_.Changed(); }

void Win32Windows::ShowModal(Window& window) {
    while (window.IsLoaded() && pump_.WaitForEvents()) {
    }
}

void Win32Windows::Discard(Window& window) {
    loop_.Remove(window);
    const auto found = std::ranges::find_if(windows_, [&](const auto& real) { return &real->Model() == &window; });
    if (found == windows_.end())
        return;
    (*found)->KeepModel();
    gone_.push_back(std::move(*found));
    windows_.erase(found);
    pump_.Changed();
}

Win32Window* Win32Windows::Find(HWND__* real) const {
    const auto found = std::ranges::find(windows_, real, &Win32Window::Real);
    return found == windows_.end() ? nullptr : found->get();
}

HWND__* Win32Windows::Front() const {
    if (const HWND active = GetActiveWindow(); active != nullptr && IsWindowVisible(active))
        return active;
    const auto front =
        std::find_if(windows_.rbegin(), windows_.rend(), [](const auto& real) { return real->IsShown(); });
    return front == windows_.rend() ? nullptr : (*front)->Real();
}

// What is to take input or to show comes first: the system would else give the foreground to another program.
void Win32Windows::Sync() {
    for (const auto& real : windows_)
        if (!real->Model().IsBehindModal() && real.get() != boxOwner_)
            real->SetEnabled(true);
    for (const auto& real : windows_) {
        if (!real->Model().IsVisible() || HasEnded())
            continue;
        if (real->IsShown()) {
            real->Sync();
            continue;
        }
        const bool isModal = std::ranges::any_of(
            windows_, [](const auto& other) { return other->IsShown() && other->Model().IsBehindModal(); });
        real->Show(isModal && !real->Model().IsBehindModal() ? Front() : nullptr);
    }
    for (const auto& real : windows_)
        if (real->IsShown() && (!real->Model().IsVisible() || HasEnded()))
            real->Hide();
    for (const auto& real : gone_)
        if (real->IsShown())
            real->Hide();
    for (const auto& real : windows_)
        if (real->Model().IsBehindModal() && real.get() != boxOwner_ && !opensBox_)
            real->SetEnabled(false);
    if (pump_.State().Idle() && boxOwner_ == nullptr)
        gone_.clear();
}

bool Win32Windows::Filter(const tagMSG& message) {
    Win32Window* window = message.hwnd == nullptr ? nullptr : Find(GetAncestor(message.hwnd, GA_ROOT));
    return window != nullptr && window->Filter(message);
}

MessageAnswer Win32Windows::RunMessageBox(const BoxText& text, const std::string& title, MessageIcon icon,
                                          MessageButtons buttons) {
    // The window in front gets the box; the system disables it, and gives it the focus back only then.
    opensBox_ = true;
    pump_.Prepare();
    opensBox_ = false;
    const HWND front = Front();
    const Win32Window* owner = Find(front);
    const Win32Window* const outer = std::exchange(boxOwner_, owner == nullptr ? boxOwner_ : owner);
    pump_.SyncNow();
    const int answer =
        MessageBoxW(front, LinesOf(text.Text).c_str(), SingleLineOf(title).c_str(), MessageFlags(icon, buttons));
    // Nothing is brought in line here: for the model the box is still in front, and its owner would lose the focus.
    boxOwner_ = outer;
    if (buttons == MessageButtons::Ok)
        return MessageAnswer::Ok;
    return answer == IDYES ? MessageAnswer::Yes : MessageAnswer::No;
}

LineSize Win32Windows::SizeInBox(const std::string& line) { return SizeOf(line, &NONCLIENTMETRICSW::lfMessageFont); }

// The system breaks longer lines, and says nowhere how wide it makes its box; no version makes it narrower.
int Win32Windows::WidestInBox() {
    constexpr int narrowest = 300; // pixels at 96 DPI, as on Wine
    return narrowest;
}

const MenuEntry* Win32Windows::RunMenu(const Menu& menu, Window& window) {
    const Win32Window* real = Find(window);
    if (real == nullptr)
        return nullptr;
    pump_.Prepare();
    const HMENU made = MakeMenu(menu);
    const auto [x, y] = real->MenuPlace();
    const int chosen =
        TrackPopupMenu(made, TPM_RETURNCMD | TPM_NONOTIFY | TPM_RIGHTBUTTON, x, y, 0, real->Real(), nullptr);
    DestroyMenu(made);
    return chosen > 0 ? menu.Entries[static_cast<std::size_t>(chosen - 1)] : nullptr;
}

PreviousProcedure Win32Windows::InstallProcedure(WindowHandle window, WindowProcedure procedure) {
    return procedures_.Install(window, procedure);
}

void Win32Windows::RestoreProcedure(WindowHandle window, PreviousProcedure previous) {
    procedures_.Restore(window, previous);
}

std::int32_t Win32Windows::CallProcedure(PreviousProcedure previous, WindowHandle window, std::uint32_t message,
                                         std::int32_t first, std::int32_t second) {
    return procedures_.Call(previous, window, message, first, second);
}

void Win32Windows::End() {
    EndMenu();
    pump_.End();
    pump_.SyncNow();
}

} // namespace tarnwick
