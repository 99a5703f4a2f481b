#pragma once

// The portable half of a front end whose desktop has no window messages of its own: posted messages, the procedures
// installed on windows, and the timers of the loaded windows.

#include "services/Services.h"

#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <unordered_map>
#include <vector>

namespace tarnwick {

class Timer;

// Something beside the desktop that queues messages: the sockets.
class EventSource {
public:
    virtual ~EventSource() = default;
    // Posts what has happened since the last call; never blocks.
    virtual void Collect() = 0;
    // Blocks until something has happened or `ms` have passed; without a bound when there is none.
    virtual void Wait(std::optional<std::int64_t> ms) = 0;
};

class MessageLoop {
public:
    explicit MessageLoop(ClockService& clock) : clock_(clock) {}

    // Windows that are loaded: they have a handle, can get messages, and their timers run.
    WindowHandle Add(Window& window);
    void Remove(Window& window);
    const std::vector<Window*>& Windows() const { return windows_; }

    struct Message {
        WindowHandle Target = 0;
        std::uint32_t Number = 0;
        std::int32_t First = 0;
        std::int32_t Second = 0;
    };
    void Post(const Message& message) { messages_.push_back(message); }
    // Takes away what is queued for a window with this first parameter (a closed socket's messages).
    void Purge(std::int32_t first);
    bool HasMessages() const { return !messages_.empty(); }

    PreviousProcedure Install(WindowHandle window, WindowProcedure procedure);
    void Restore(WindowHandle window, PreviousProcedure previous);
    std::int32_t Call(PreviousProcedure previous, WindowHandle window, std::uint32_t message, std::int32_t first,
                      std::int32_t second);

    // Hands each posted message, in order, to the procedure that its window has at that moment.
    void DispatchMessages();
    // Raises the tick of every timer that is due, at most once a timer.
    void FireTimers();
    // How long until the next tick: ms, 0 when one is due, nothing when no timer runs.
    std::optional<std::int64_t> UntilNextTick() const;

private:
    ClockService& clock_;
    WindowHandle lastHandle_ = 0;
    std::vector<Window*> windows_;
    std::unordered_map<WindowHandle, WindowProcedure> procedures_;
    std::deque<Message> messages_;
};

} // namespace tarnwick
