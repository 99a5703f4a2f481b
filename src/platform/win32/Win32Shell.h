#pragma once

#include "services/Services.h"

namespace tarnwick {

class Win32Shell final : public ShellService {
public:
    void OpenUrl(WindowHandle owner, const std::string& url) override;
};

} // namespace tarnwick
