#include "platform/win32/Win32Pump.h"

#include <windows.h>

#include <algorithm>
#include <optional>
#include <utility>

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
    : loop_(loop), clock_(clock), state_(clock, std::move(sync)), filter_(std::move(filter)) {
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
    if (state_.Ended() || state_.OnlyPaints())
        return !state_.Ended();
    Changed();
    Arm();
    Drain();
    return !state_.Ended();
}

bool Win32Pump::WaitForEvents() {
    if (state_.Ended())
        return false;
    Prepare();
    if (!state_.HasKept())
        MsgWaitForMultipleObjectsEx(0, nullptr, INFINITE, QS_ALLINPUT, MWMO_INPUTAVAILABLE);
    Drain();
    return !state_.Ended();
}

// Looking for messages keeps the system from taking the program for dead; those that other threads and programs wait
// for are answered by it, and what they lead to is kept.
void Win32Pump::PaintUntil(const std::function<bool(std::int64_t)>& isDone, std::int64_t ms) {
    const std::int64_t end = clock_.Now() + ms;
    state_.OnlyPaint([&] {
        do {
            MSG message;
            while (!state_.Ended() &&
                   PeekMessageW(&message, nullptr, WM_PAINT, WM_PAINT, PM_REMOVE | PM_QS_PAINT | PM_QS_SENDMESSAGE))
                if (message.message == WM_QUIT) // comes through every filter
                    End();
                else
                    DispatchMessageW(&message);
        } while (!isDone(std::clamp<std::int64_t>(end - clock_.Now(), 0, Pace::Shortest)) && clock_.Now() < end);
    });
    Arm();
}

// Timer messages come only where no other one is waiting, so ticks are last.
void Win32Pump::Drain() {
    state_.HandleKept();
    MSG message;
    while (!state_.Ended() && PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
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
    const std::int64_t wait = state_.Follow();
    if (wait == 0) {
        StopSyncTimer();
    } else if (!syncAwaited_) {
        syncAwaited_ = true;
        SetTimer(alarm_, SyncTimer, static_cast<UINT>(wait), nullptr);
    }
}

void Win32Pump::SyncNow() {
    StopSyncTimer();
    state_.SyncNow();
}

void Win32Pump::StopSyncTimer() {
    if (std::exchange(syncAwaited_, false))
        KillTimer(alarm_, SyncTimer);
}

void Win32Pump::End() {
    state_.End();
    PostQuitMessage(0);
}

void Win32Pump::Handle(std::function<void()> handler) {
    if (state_.Syncing())
        return;
    state_.Handle(std::move(handler));
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
    Handle([this] {
        state_.HandleKept();
        loop_.FireTimers();
    });
}

// Sees to it that a timer message comes when the next tick is due. One that comes too early does no harm.
void Win32Pump::Arm() {
    const std::optional<std::int64_t> wait = state_.HasKept() ? 0 : loop_.UntilNextTick();
    if (!wait || state_.Ended())
        return;
    const std::int64_t at = clock_.Now() + *wait;
    if (wakeAt_ != 0 && wakeAt_ <= at)
        return;
    wakeAt_ = at;
    SetTimer(alarm_, TickTimer, static_cast<UINT>(*wait), nullptr);
}

} // namespace tarnwick
