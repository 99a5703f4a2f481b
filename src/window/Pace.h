#pragma once

#include <algorithm>
#include <cstdint>

namespace tarnwick {

// When the real windows are brought in line with the model: at once in the first pump pass of a handler, which shows
// the user what the click has done, then about as often as a screen does. A busy program spends at most a tenth of its
// time on that, as long as the windows don't come to a standstill. Times are in ms of the clock service.
class Pace {
public:
    static constexpr std::int64_t Shortest = 16;
    static constexpr std::int64_t Longest = 200;

    // A handler begins that the user or a timer has set off.
    void Begin() { nextAt_ = 0; }
    // How long the windows may wait, 0 when it is time.
    std::int64_t Wait(std::int64_t now) const { return std::max<std::int64_t>(0, nextAt_ - now); }
    // The windows were brought in line from `start` to `end`.
    void Done(std::int64_t start, std::int64_t end);

private:
    std::int64_t nextAt_ = 0;
};

} // namespace tarnwick
