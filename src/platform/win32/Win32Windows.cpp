#include "platform/win32/Win32Windows.h"

#include "platform/win32/Win32Text.h"

#include <windows.h>

#include <commctrl.h>

#include <algorithm>

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

// A box grows with its text; no favorite may push the buttons off the screen.
std::wstring WithShortLines(std::wstring text) {
    constexpr std::size_t longest = 1000; // characters
    std::size_t start = 0;
    while (start < text.size()) {
        const std::size_t end = std::min(text.find(L'\n', start), text.size());
        if (end - start > longest)
            text.replace(start + longest, end - start - longest, L"...");
        start = std::min(text.find(L'\n', start), text.size()) + 1;
    }
    return text;
}

HMENU MakeMenu(const Menu& menu) {
    const HMENU made = CreatePopupMenu();
    UINT_PTR number = 0;
    for (const MenuEntry* entry : menu.Entries) {
        ++number;
        if (entry->Separator)
            AppendMenuW(made, MF_SEPARATOR, 0, nullptr);
        else
            AppendMenuW(made, MF_STRING | (entry->Enabled ? MF_ENABLED : MF_GRAYED), number,
                        LiteralCaption(entry->Caption).c_str());
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
    while (!pump_.Ended())
        pump_.WaitForEvents();
}

Win32Window* Win32Windows::Find(const Window& window) const {
    const auto found = std::ranges::find_if(windows_, [&](const auto& real) { return &real->Model() == &window; });
    return found == windows_.end() ? nullptr : found->get();
}

HWND__* Win32Windows::RealOf(const Window& window, const Control& control) const {
    const Win32Window* real = Find(window);
    const Win32Control* made = real == nullptr ? nullptr : real->Find(&control);
    return made == nullptr ? nullptr : made->Real();
}

WindowHandle Win32Windows::Open(Window& window) {
    loop_.Add(window);
    windows_.push_back(std::make_unique<Win32Window>(window, pump_));
    return HandleOf(windows_.back()->Real());
}

void Win32Windows::Show(Window&) { pump_.Changed(); }

void Win32Windows::Hide(Window&) { pump_.Changed(); }

void Win32Windows::ShowModal(Window& window) {
    if (pump_.Ended() || !window.IsLoaded())
        return;
    modals_.push_back(&window);
    while (window.IsLoaded() && !pump_.Ended())
        pump_.WaitForEvents();
}

void Win32Windows::Discard(Window& window) {
    loop_.Remove(window);
    std::erase(modals_, &window);
    const auto found = std::ranges::find_if(windows_, [&](const auto& real) { return &real->Model() == &window; });
    if (found == windows_.end())
        return;
    (*found)->KeepModel();
    gone_.push_back(std::move(*found));
    windows_.erase(found);
    pump_.Changed();
}

bool Win32Windows::IsBlocked(const Win32Window& real) const {
    return !modals_.empty() && modals_.back() != &real.Model();
}

Win32Window* Win32Windows::Front() const {
    const auto front = std::find_if(windows_.rbegin(), windows_.rend(),
                                    [this](const auto& real) { return real->IsShown() && !IsBlocked(*real); });
    return front == windows_.rend() ? nullptr : front->get();
}

// What becomes reachable or shows comes first: the system would else give the foreground to another program.
void Win32Windows::Sync() {
    for (const auto& real : windows_)
        if (!IsBlocked(*real))
            real->SetReachable(true);
    for (const auto& real : windows_) {
        if (!real->Model().IsVisible() || pump_.Ended())
            continue;
        if (real->IsShown()) {
            real->Sync();
            continue;
        }
        const bool isModal = !modals_.empty() && modals_.back() == &real->Model();
        const auto owner = std::ranges::find_if(
            windows_, [&](const auto& other) { return isModal && other->IsShown() && other->IsReachable(); });
        real->Show(owner == windows_.end() ? nullptr : (*owner)->Real());
    }
    for (const auto& real : windows_)
        if (real->IsShown() && (!real->Model().IsVisible() || pump_.Ended()))
            real->Hide();
    for (const auto& real : gone_)
        if (real->IsShown())
            real->Hide();
    for (const auto& real : windows_)
        if (IsBlocked(*real))
            real->SetReachable(false);
    if (pump_.Idle())
        gone_.clear();
}

bool Win32Windows::Filter(const tagMSG& message) {
    const HWND root = message.hwnd == nullptr ? nullptr : GetAncestor(message.hwnd, GA_ROOT);
    const auto real = std::ranges::find(windows_, root, &Win32Window::Real);
    return real != windows_.end() && (*real)->Filter(message);
}

MessageAnswer Win32Windows::ShowMessage(const std::string& text, const std::string& title, MessageIcon icon,
                                        MessageButtons buttons) {
    if (pump_.Ended())
        return buttons == MessageButtons::Ok ? MessageAnswer::Ok : MessageAnswer::No;
    pump_.Prepare();
    const Win32Window* owner = Front();
    // The box blocks its owner; the others are blocked here.
    const std::size_t depth = modals_.size();
    modals_.push_back(owner == nullptr ? nullptr : &owner->Model());
    pump_.SyncNow();
    const int answer = MessageBoxW(owner == nullptr ? nullptr : owner->Real(), WithShortLines(LinesOf(text)).c_str(),
                                   SingleLineOf(title).c_str(), MessageFlags(icon, buttons));
    modals_.resize(std::min(modals_.size(), depth)); // it may have been unloaded meanwhile
    pump_.Changed();
    if (buttons == MessageButtons::Ok)
        return MessageAnswer::Ok;
    return answer == IDYES ? MessageAnswer::Yes : MessageAnswer::No;
}

const MenuEntry* Win32Windows::PopUp(const Menu& menu, Window& window) {
    const Win32Window* real = Find(window);
    if (real == nullptr || pump_.Ended())
        return nullptr;
    pump_.Prepare();
    const HMENU made = MakeMenu(menu);
    const auto [x, y] = real->MenuPlace();
    const int chosen =
        TrackPopupMenu(made, TPM_RETURNCMD | TPM_NONOTIFY | TPM_RIGHTBUTTON, x, y, 0, real->Real(), nullptr);
    DestroyMenu(made);
    return chosen > 0 && !pump_.Ended() ? menu.Entries[static_cast<std::size_t>(chosen - 1)] : nullptr;
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
