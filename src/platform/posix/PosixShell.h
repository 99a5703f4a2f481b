#pragma once

#include "services/Services.h"

namespace tarnwick {

// Hands URLs to the desktop's xdg-open.
class PosixShell final : public ShellService {
public:
    void OpenUrl(WindowHandle owner, const std::string& url) override;
};

} // namespace tarnwick
