#pragma once

#include "platform/Services.h"

namespace tarnwick {

class SteadyClock final : public ClockService {
public:
    std::int64_t Now() override;
};

} // namespace tarnwick
