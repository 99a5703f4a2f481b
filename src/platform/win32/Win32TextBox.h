#pragma once

#include "platform/win32/Win32Control.h"

namespace tarnwick {

class Win32TextBox final : public Win32Control {
public:
    Win32TextBox(Win32Window& owner, TextBox& model, HWND__* parent, int number);

    void OnCommand(unsigned notice) override;

    bool HasOwnGround() const override { return true; }

private:
    void SyncContent() override;

    TextBox& box_;
    Shown<std::string> shown_{{}};
    Shown<unsigned> selection_{0};
};

} // namespace tarnwick
