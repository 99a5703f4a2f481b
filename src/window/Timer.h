#pragma once

#include <cstdint>
#include <functional>

namespace tarnwick {

// A timer of a window: while it is enabled and its window is loaded, Tick is raised from the pump each time the
// interval has passed. Missed ticks are not made up.
class Timer {
public:
    std::function<void()> Tick;

    // In ms. False, and the old interval stays, for an interval of 0 or below.
    bool SetInterval(std::int32_t ms);

    bool Enabled() const { return enabled_; }
    // Starts the count from zero; no effect on a timer that runs.
    void Enable();
    void Disable() { enabled_ = false; }

    // For the event loop: when the next tick is due, in ms of the clock service.
    std::int64_t DueAt() const { return dueAt_; }
    // For the event loop: takes the tick that was due at `now` and sets the time of the next one.
    void TakeTick(std::int64_t now);

private:
    std::int32_t interval_ = 1000;
    bool enabled_ = false;
    std::int64_t dueAt_ = 0;
};

} // namespace tarnwick
