#pragma once

// The one stream of events: the system's messages, among them those of the sockets, and the ticks of the model's
// timers. It flows wherever a message loop runs: in the program's own loops, and in the system's, as in message boxes
// and menus.

#include "platform/win32/Win32Handles.h"
#include "window/MessageLoop.h"
#include "window/PumpState.h"

#include <cstdint>
#include <functional>

namespace tarnwick {

class Win32Pump {
public:
    // `sync` brings the real windows in line with the model. `filter` sees each message of the program's own loops
    // first; true: it has been handled.
    Win32Pump(MessageLoop& loop, ClockService& clock, std::function<void()> sync,
              std::function<bool(const tagMSG&)> filter);
    ~Win32Pump();
    Win32Pump(const Win32Pump&) = delete;
    Win32Pump& operator=(const Win32Pump&) = delete;

    bool PumpEvents();
    bool WaitForEvents();
    void PaintUntil(const std::function<bool(std::int64_t)>& isDone, std::int64_t ms);

    // Fields may have changed: the windows follow at once, or a moment later where a busy handler has them follow
    // often.
    void Changed();
    void SyncNow();

    // Before a loop of the system's own.
    void Prepare();

    // From now on nothing is handled, and every loop returns.
    void End();

    // Runs what a message has led to, now or, while only painting is done, when that is over.
    void Handle(std::function<void()> handler);
    const PumpState& State() const { return state_; }

    // For the system.
    void OnTimer(std::uintptr_t timer);

private:
    void StopSyncTimer();
    void Arm();
    void Drain();

    MessageLoop& loop_;
    ClockService& clock_;
    PumpState state_;
    const std::function<bool(const tagMSG&)> filter_;
    HWND__* alarm_ = nullptr; // never seen: gets the system's timer messages

    std::int64_t wakeAt_ = 0;  // of the system's timer for the next tick, in ms of the clock; 0: it doesn't run
    bool syncAwaited_ = false; // the system's timer for the next sync runs
};

} // namespace tarnwick
