#include "window/Pace.h"

#include <algorithm>

namespace tarnwick {

void Pace::Done(std::int64_t start, std::int64_t end) {
    constexpr std::int64_t timesTheCost = 10;
    nextAt_ = end + std::clamp(timesTheCost * (end - start), Shortest, Longest);
}

} // namespace tarnwick
