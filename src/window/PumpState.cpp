#include "window/PumpState.h"

#include "services/Services.h"

#include <utility>

namespace tarnwick {

PumpState::PumpState(ClockService& clock, std::function<void()> sync) : clock_(clock), sync_(std::move(sync)) {}

void PumpState::Handle(std::function<void()> handler) {
    if (ended_)
        return;
    if (painting_) {
        kept_.push_back(std::move(handler));
        return;
    }
    if (Idle())
        pace_.Begin();
    ++handlers_;
    handler();
    --handlers_;
}

void PumpState::HandleKept() {
    while (!kept_.empty() && !painting_ && !ended_) {
        std::function<void()> handler = std::move(kept_.front());
        kept_.pop_front();
        Handle(std::move(handler));
    }
}

void PumpState::OnlyPaint(const std::function<void()>& work) {
    SyncNow();
    painting_ = true;
    work();
    painting_ = false;
}

std::int64_t PumpState::Follow() {
    const std::int64_t wait = Idle() ? 0 : pace_.Wait(clock_.Now());
    if (wait == 0)
        SyncNow();
    return wait;
}

void PumpState::SyncNow() {
    if (syncing_)
        return;
    syncing_ = true;
    const std::int64_t start = clock_.Now();
    sync_();
    pace_.Done(start, clock_.Now());
    syncing_ = false;
}

} // namespace tarnwick
