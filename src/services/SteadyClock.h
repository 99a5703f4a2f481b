#pragma once

#include "services/Services.h"

namespace tarnwick {

class SteadyClock final : public ClockService {
public:
    std::int64_t Now() override;
};

} // namespace tarnwick
