#pragma once

// The one stream of events: the system's messages, among them those of the sockets, and the ticks of the model's
// timers. It flows wherever a message loop runs: in the program's own loops, and in the system's, as in message boxes
// and menus.

#include "platform/win32/Win32Handles.h"
#include "window/MessageLoop.h"
#include "window/Pace.h"

#include <cstdint>
#include <functional>
#include <utility>

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
    // What real windows report meanwhile is only the echo of what is written into them.
    bool Syncing() const { return syncing_; }

    // Before a loop of the system's own.
    void Prepare();

    // From now on nothing is handled, and every loop returns.
    void End();
    bool Ended() const { return ended_; }

    // Runs what a message has led to.
    template <class Handler> void Handle(Handler&& handler) {
        if (ended_ || painting_ || syncing_)
            return;
        if (Idle())
            pace_.Begin();
        ++handlers_;
        std::forward<Handler>(handler)();
        LeaveHandler();
    }
    // No handler is on the stack.
    bool Idle() const { return handlers_ == 0; }

    // For the system.
    void OnTimer(std::uintptr_t timer);

private:
    void LeaveHandler();
    void Arm();
    void Drain();

    MessageLoop& loop_;
    ClockService& clock_;
    const std::function<void()> sync_;
    const std::function<bool(const tagMSG&)> filter_;
    HWND__* alarm_ = nullptr; // never seen: gets the system's timer messages

    std::int64_t wakeAt_ = 0; // of the system's timer for the next tick, in ms of the clock; 0: it doesn't run
    Pace pace_;
    bool syncAwaited_ = false; // the system's timer for the next sync runs
    int handlers_ = 0;         // on the stack
    bool painting_ = false;    // and nothing else, until some work is done
    bool syncing_ = false;
    bool ended_ = false;
};

} // namespace tarnwick
