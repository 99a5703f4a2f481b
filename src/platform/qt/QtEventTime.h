#pragma once

#include <cstdint>

class QEvent;

namespace tarnwick {

// When an event happened, in ms of the clock service; now for one without a time of its own.
std::int64_t TimeOf(const QEvent& event);

} // namespace tarnwick
