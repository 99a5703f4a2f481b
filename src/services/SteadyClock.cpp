#include "services/SteadyClock.h"

#include <chrono>

namespace tarnwick {

std::int64_t SteadyClock::Now() {
    const auto since = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration_cast<std::chrono::milliseconds>(since).count();
}

} // namespace tarnwick
