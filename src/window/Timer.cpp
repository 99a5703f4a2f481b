#include "window/Timer.h"

#include "services/Services.h"

#include <algorithm>

namespace tarnwick {

bool Timer::SetInterval(std::int32_t ms) {
    if (ms <= 0)
        return false;
    interval_ = ms;
    if (enabled_)
        dueAt_ = services().Clock.Now() + interval_;
    return true;
}

void Timer::Enable() {
    if (enabled_)
        return;
    enabled_ = true;
    dueAt_ = services().Clock.Now() + interval_;
}

void Timer::TakeTick(std::int64_t now) {
    dueAt_ += interval_;
    if (dueAt_ <= now)
        dueAt_ = now + interval_;
}

} // namespace tarnwick
