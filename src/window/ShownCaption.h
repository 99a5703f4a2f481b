#pragma once

#include <cstdint>
#include <string>
#include <utility>

namespace tarnwick {

// What a real button shows, and what it showed before: a click that waited in a queue was meant for what the user saw.
class ShownCaption {
public:
    // At `now`, in ms of the clock service.
    void Show(std::string caption, std::int64_t now) {
        before_ = std::exchange(now_, std::move(caption));
        since_ = now;
    }
    const std::string& Now() const { return now_; }
    // What the user saw at `time`, in ms of the clock service.
    const std::string& At(std::int64_t time) const { return time < since_ ? before_ : now_; }

private:
    std::string now_;
    std::string before_;
    std::int64_t since_ = 0;
};

} // namespace tarnwick
