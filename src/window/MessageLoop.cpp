#include "window/MessageLoop.h"

#include "window/Window.h"

#include <algorithm>
#include <utility>

namespace tarnwick {

namespace {

// What a window does with a message that no installed procedure has taken: nothing.
std::int32_t OwnProcedure(WindowHandle, std::uint32_t, std::int32_t, std::int32_t) { return 0; }

} // namespace

WindowHandle MessageLoop::Add(Window& window) {
    windows_.push_back(&window);
    procedures_[++lastHandle_] = OwnProcedure;
    return lastHandle_;
}

void MessageLoop::Remove(Window& window) {
    std::erase(windows_, &window);
    procedures_.erase(window.Handle());
}

void MessageLoop::Purge(std::int32_t first) {
    std::erase_if(messages_, [first](const Message& message) { return message.First == first; });
}

PreviousProcedure MessageLoop::Install(WindowHandle window, WindowProcedure procedure) {
    const auto found = procedures_.find(window);
    if (found == procedures_.end())
        return 0;
    return reinterpret_cast<PreviousProcedure>(std::exchange(found->second, procedure));
}

void MessageLoop::Restore(WindowHandle window, PreviousProcedure previous) {
    if (const auto found = procedures_.find(window); found != procedures_.end() && previous != 0)
        found->second = reinterpret_cast<WindowProcedure>(previous);
}

std::int32_t MessageLoop::Call(PreviousProcedure previous, WindowHandle window, std::uint32_t message,
                               std::int32_t first, std::int32_t second) {
    if (previous == 0)
        return 0;
    return reinterpret_cast<WindowProcedure>(previous)(window, message, first, second);
}

// Messages come before ticks in a pass, and each in its own order, because a link's own event then ends it in the pass
// in which its time-out is due as well. A message that a handler posts is handled in the same pass: a reply that is
// there with the connection needs no further one. Each message finds the procedure that its window has at that moment,
// so that a handler that takes its procedure away gets nothing more; ticks are collected first and looked at again one
// by one, as the handler of one may stop the next or handle it in a pump of its own.
void MessageLoop::DispatchMessages() {
    while (!messages_.empty()) {
        const Message message = messages_.front();
        messages_.pop_front();
        if (const auto found = procedures_.find(message.Target); found != procedures_.end())
            found->second(message.Target, message.Number, message.First, message.Second);
    }
}

void MessageLoop::FireTimers() {
    const std::int64_t now = clock_.Now();
    std::vector<std::pair<std::shared_ptr<Window>, Timer*>> due;
    for (Window* window : windows_)
        for (Timer* timer : window->Timers)
            if (timer->Enabled() && timer->DueAt() <= now)
                due.emplace_back(window->shared_from_this(), timer);
    std::ranges::stable_sort(due, {}, [](const auto& entry) { return entry.second->DueAt(); });

    for (const auto& [window, timer] : due) {
        // A tick before this one may have switched it off, or handled it in a pump of its own.
        if (!timer->Enabled() || timer->DueAt() > now)
            continue;
        timer->TakeTick(now);
        window->Raise(timer->Tick);
    }
}

std::optional<std::int64_t> MessageLoop::UntilNextTick() const {
    std::optional<std::int64_t> next;
    for (const Window* window : windows_)
        for (const Timer* timer : window->Timers)
            if (timer->Enabled() && (!next || timer->DueAt() < *next))
                next = timer->DueAt();
    if (next)
        next = std::max<std::int64_t>(0, *next - clock_.Now());
    return next;
}

} // namespace tarnwick
