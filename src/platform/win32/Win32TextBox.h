#pragma once

#include "platform/win32/Win32Control.h"

namespace tarnwick {

class Win32TextBox final : public Win32Control {
public:
    Win32TextBox(Win32Window& owner, TextBox& model, HWND__* parent, int number);

    void OnCommand(unsigned notice) override;

private:
    void SyncContent() override;

    TextBox& box_;
    std::string shown_;
    unsigned selectRevision_ = 0;
};

} // namespace tarnwick
