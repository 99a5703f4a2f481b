#include "platform/win32/Win32Pump.h"

#include <windows.h>

#include <algorithm>
#include <optional>

namespace tarnwick {

namespace {

constexpr const wchar_t* AlarmClass = L"TarnwickAlarm";
constexpr std::uintptr_t TickTimer = 1;
constexpr std::uintptr_t SyncTimer = 2;

LRESULT CALLBACK AlarmProcedure(HWND window, UINT message, WPARAM first, LPARAM second) {
    if (message != WM_TIMER)
        return DefWindowProcW(window, message, first, second);
    reinterpret_cast<Win32Pump*>(GetWindowLongPtrW(window, GWLP_USERDATA))->OnTimer(first);
    return 0;
}

bool IsButtonOrKey(UINT message) {
    return (message >= WM_KEYFIRST && message <= WM_KEYLAST) || (message > WM_MOUSEMOVE && message <= WM_MOUSELAST) ||
           (message > WM_NCMOUSEMOVE && message <= WM_NCXBUTTONDBLCLK);
}

} // namespace

Win32Pump::Win32Pump(MessageLoop& loop, ClockService& clock, std::function<void()> sync,
                     std::function<bool(const tagMSG&)> filter)
    : loop_(loop), clock_(clock), sync_(std::move(sync)), filter_(std::move(filter)) {
    WNDCLASSEXW type = {};
    type.cbSize = sizeof type;
    type.lpfnWndProc = AlarmProcedure;
    type.hInstance = GetModuleHandleW(nullptr);
    type.lpszClassName = AlarmClass;
    RegisterClassExW(&type);
    alarm_ = CreateWindowExW(0, AlarmClass, nullptr, 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, type.hInstance, nullptr);
    SetWindowLongPtrW(alarm_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
}

Win32Pump::~Win32Pump() { DestroyWindow(alarm_); }

bool Win32Pump::PumpEvents() {
    if (ended_)
        return false;
    Changed();
    Arm();
    Drain();
    return !ended_;
}

bool Win32Pump::WaitForEvents() {
    if (ended_)
        return false;
    Prepare();
    MsgWaitForMultipleObjectsEx(0, nullptr, INFINITE, QS_ALLINPUT, MWMO_INPUTAVAILABLE);
    Drain();
    return !ended_;
}

// Looking for messages keeps the system from taking the program for dead; those that other threads and programs wait
// for are answered by it.
void Win32Pump::PaintUntil(const std::function<bool(std::int64_t)>& isDone, std::int64_t ms) {
    const std::int64_t end = clock_.Now() + ms;
    SyncNow();
    painting_ = true;
    do {
        MSG message;
        while (!ended_ &&
               PeekMessageW(&message, nullptr, WM_PAINT, WM_PAINT, PM_REMOVE | PM_QS_PAINT | PM_QS_SENDMESSAGE))
            if (message.message == WM_QUIT) // comes through every filter
                End();
            else
                DispatchMessageW(&message);
    } while (!isDone(std::clamp<std::int64_t>(end - clock_.Now(), 0, Pace::Shortest)) && clock_.Now() < end);
    painting_ = false;
}

// Timer messages come only where no other one is waiting, so ticks are last.
void Win32Pump::Drain() {
    MSG message;
    while (!ended_ && PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        if (message.message == WM_QUIT) {
            End();
            return;
        }
        // Input shall meet what the model says.
        if (IsButtonOrKey(message.message))
            SyncNow();
        if (filter_(message))
            continue;
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}

void Win32Pump::Prepare() {
    SyncNow();
    Arm();
}

void Win32Pump::Changed() {
    const std::int64_t wait = Idle() ? 0 : pace_.Wait(clock_.Now());
    if (wait <= 0) {
        SyncNow();
    } else if (!syncAwaited_) {
        syncAwaited_ = true;
        SetTimer(alarm_, SyncTimer, static_cast<UINT>(wait), nullptr);
    }
}

void Win32Pump::SyncNow() {
    if (syncing_)
        return;
    if (std::exchange(syncAwaited_, false))
        KillTimer(alarm_, SyncTimer);
    syncing_ = true;
    const std::int64_t start = clock_.Now();
    sync_();
    pace_.Done(start, clock_.Now());
    syncing_ = false;
}

void Win32Pump::End() {
    ended_ = true;
    PostQuitMessage(0);
}

void Win32Pump::LeaveHandler() {
    --handlers_;
    Changed();
    Arm();
}

void Win32Pump::OnTimer(std::uintptr_t timer) {
    if (timer == SyncTimer) {
        SyncNow();
        return;
    }
    wakeAt_ = 0;
    KillTimer(alarm_, TickTimer);
    Handle([this] { loop_.FireTimers(); });
}

// Sees to it that a timer message comes when the next tick is due. One that comes too early does no harm.
void Win32Pump::Arm() {
    const std::optional<std::int64_t> wait = loop_.UntilNextTick();
    if (!wait || ended_)
        return;
    const std::int64_t at = clock_.Now() + *wait;
    if (wakeAt_ != 0 && wakeAt_ <= at)
        return;
    wakeAt_ = at;
    SetTimer(alarm_, TickTimer, static_cast<UINT>(*wait), nullptr);
}

} // namespace tarnwick
