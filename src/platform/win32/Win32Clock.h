#pragma once

#include "platform/Services.h"

namespace tarnwick {

class Win32Clock final : public ClockService {
public:
    std::int64_t Now() override;
};

} // namespace tarnwick
