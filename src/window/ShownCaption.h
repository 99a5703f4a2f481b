#pragma once

#include <cstdint>
#include <string>
#include <utility>

namespace tarnwick {

// What a real button shows, and what it showed before: a click that waited in a queue was meant for what the user saw.
class ShownCaption {
public:
    // Whether `caption` is not what is shown; it counts as shown from `now` on, in ms of the clock service.
    bool Differs(const std::string& caption, std::int64_t now) {
        if (now_ == caption)
            return false;
        before_ = std::exchange(now_, caption);
        since_ = now;
        return true;
    }
    // What the user saw at `time`, in ms of the clock service.
    const std::string& At(std::int64_t time) const { return time < since_ ? before_ : now_; }

private:
    std::string now_;
    std::string before_;
    std::int64_t since_ = 0;
};

} // namespace tarnwick
