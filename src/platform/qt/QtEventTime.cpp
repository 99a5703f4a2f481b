#include "platform/qt/QtEventTime.h"

#include "services/Services.h"

#include <QInputEvent>

#include <algorithm>
#include <optional>

namespace tarnwick {

// The display stamps input in ms of a clock of its own. The event with the smallest difference between the two clocks
// has waited the least, and counts as new. A longer wait than this is a clock that has begun anew.
std::int64_t TimeOf(const QEvent& event) {
    constexpr std::int64_t LongestWait = 60'000;
    static std::optional<std::int64_t> ahead;
    const std::int64_t now = services().Clock.Now();
    const auto* input = dynamic_cast<const QInputEvent*>(&event);
    if (input == nullptr || input->timestamp() == 0)
        return now;
    const std::int64_t difference = now - static_cast<std::int64_t>(input->timestamp());
    if (!ahead || difference < *ahead || difference - *ahead > LongestWait)
        ahead = difference;
    return now - (difference - *ahead);
}

} // namespace tarnwick
