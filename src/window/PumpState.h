#pragma once

#include "window/Pace.h"

#include <cstdint>
#include <deque>
#include <functional>

namespace tarnwick {

class ClockService;

// What the pumps of all front ends have in common: which handlers are on the stack and whether one may run now, and
// when the real windows follow the model.
//
// Why handlers are kept: while a call blocks, the windows are painted but nothing may be handled, and yet the desktop
// delivers some input in ways that can't be held back: what another program sends or calls, a screen reader above all.
// Such input is kept here, in its order, and handled when the call has returned.
class PumpState {
public:
    // `sync` brings the real windows in line with the model.
    PumpState(ClockService& clock, std::function<void()> sync);

    // Runs what an event has led to; the windows that have not followed yet do so at the latest with Follow(). While
    // only painting is done it is kept; after the program's end it is dropped.
    void Handle(std::function<void()> handler);
    // Handles what was kept.
    void HandleKept();
    bool HasKept() const { return !kept_.empty(); }

    // Runs `work`, during which windows are painted and nothing is handled. The windows follow the model first.
    void OnlyPaint(const std::function<void()>& work);
    bool OnlyPaints() const { return painting_; }

    // From now on nothing is handled.
    void End() { ended_ = true; }
    bool Ended() const { return ended_; }
    // No handler is on the stack.
    bool Idle() const { return handlers_ == 0; }

    // Fields may have changed: the windows follow at once where no handler runs, else as often as Pace allows. How many
    // ms later SyncNow() is to be called where they have to wait; 0: they have followed.
    std::int64_t Follow();
    void SyncNow();
    // What real windows report meanwhile is only the echo of what is written into them.
    bool Syncing() const { return syncing_; }

private:
    ClockService& clock_;
    const std::function<void()> sync_;
    Pace pace_;
    std::deque<std::function<void()>> kept_;
    int handlers_ = 0; // on the stack
    bool painting_ = false;
    bool syncing_ = false;
    bool ended_ = false;
};

} // namespace tarnwick
