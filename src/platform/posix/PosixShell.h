#pragma once

#include "platform/Services.h"

namespace tarnwick {

// Hands URLs to the desktop's xdg-open. A path opens nothing, also one that is dressed as a URL ("file:"): what a
// favorite names must not start a program of this machine.
class PosixShell final : public ShellService {
public:
    void OpenUrl(WindowHandle owner, const std::string& url) override;
};

} // namespace tarnwick
